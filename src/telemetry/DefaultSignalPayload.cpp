#include "DefaultSignalPayload.h"

#include "TelemetryBuildSettings.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>
#include <QSysInfo>
#include <QTimeZone>

namespace {
QString boolText(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString readModelName(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("Unknown");
    }
    const QString name = QString::fromUtf8(file.readAll()).trimmed();
    return name.isEmpty() ? QStringLiteral("Unknown") : name;
}

// The distribution's version (os-release VERSION_ID), or the kernel's when it has none.
QString systemVersion()
{
    const QString version = QSysInfo::productVersion();
    return version == QStringLiteral("unknown") ? QSysInfo::kernelVersion() : version;
}

QString leadingComponents(const QString& version, int count)
{
    return version.section(QLatin1Char('.'), 0, count - 1).section(QLatin1Char('-'), 0, 0);
}

QString applicationVersion()
{
    const QString version = QCoreApplication::applicationVersion();
    return version.isEmpty() ? qbtelemetrybuild::clientVersion() : version;
}

QString layoutDirection(const QLocale& locale)
{
    return locale.textDirection() == Qt::RightToLeft ? QStringLiteral("rightToLeft")
                                                     : QStringLiteral("leftToRight");
}

TelemetryParameters computeFixedParameters(const QString& modelNamePath)
{
    const QLocale locale = QLocale::system();
    const QString preferredLanguage =
        locale.uiLanguages().value(0, QLocale::languageToCode(locale.language()));
    const QString version = applicationVersion();
    const QString buildNumber = qbtelemetrybuild::clientVersion();
    const QString system = systemVersion();
    const QString sdkName = QStringLiteral("QuillboxTelemetry");
    const QString sdkVersion = qbtelemetrybuild::clientVersion();
#ifdef NDEBUG
    const bool isDebug = false;
#else
    const bool isDebug = true;
#endif
    return {
        {QStringLiteral("Tallyhub.AppInfo.buildNumber"), buildNumber},
        {QStringLiteral("Tallyhub.AppInfo.version"), version},
        {QStringLiteral("Tallyhub.AppInfo.versionAndBuildNumber"),
         QStringLiteral("%1 (build %2)").arg(version, buildNumber)},
        {QStringLiteral("Tallyhub.Device.architecture"), QSysInfo::currentCpuArchitecture()},
        {QStringLiteral("Tallyhub.Device.modelName"), readModelName(modelNamePath)},
        {QStringLiteral("Tallyhub.Device.operatingSystem"), QStringLiteral("Linux")},
        {QStringLiteral("Tallyhub.Device.platform"), QSysInfo::productType()},
        {QStringLiteral("Tallyhub.Device.systemVersion"), system},
        {QStringLiteral("Tallyhub.Device.systemMajorVersion"), leadingComponents(system, 1)},
        {QStringLiteral("Tallyhub.Device.systemMajorMinorVersion"), leadingComponents(system, 2)},
        {QStringLiteral("Tallyhub.Device.timeZone"),
         QString::fromUtf8(QTimeZone::systemTimeZoneId())},
        {QStringLiteral("Tallyhub.RunContext.isAppStore"), boolText(false)},
        {QStringLiteral("Tallyhub.RunContext.isDebug"), boolText(isDebug)},
        {QStringLiteral("Tallyhub.RunContext.isSimulator"), boolText(false)},
        {QStringLiteral("Tallyhub.RunContext.isTestFlight"), boolText(false)},
        {QStringLiteral("Tallyhub.RunContext.language"),
         preferredLanguage.section(QLatin1Char('-'), 0, 0)},
        {QStringLiteral("Tallyhub.RunContext.locale"), locale.name()},
        {QStringLiteral("Tallyhub.RunContext.targetEnvironment"), QStringLiteral("native")},
        {QStringLiteral("Tallyhub.SDK.name"), sdkName},
        {QStringLiteral("Tallyhub.SDK.version"), sdkVersion},
        {QStringLiteral("Tallyhub.SDK.nameAndVersion"), sdkName + QLatin1Char(' ') + sdkVersion},
        {QStringLiteral("Tallyhub.UserPreference.language"), preferredLanguage},
        {QStringLiteral("Tallyhub.UserPreference.layoutDirection"), layoutDirection(locale)},
        {QStringLiteral("Tallyhub.UserPreference.region"),
         QLocale::territoryToCode(locale.territory())},
    };
}
} // namespace

DefaultSignalPayload::DefaultSignalPayload(QString modelNamePath)
    : mModelNamePath(std::move(modelNamePath))
{}

TelemetryParameters DefaultSignalPayload::parameters(const QDateTime& moment)
{
    TelemetryParameters result = fixedParameters();
    DisplayEnvironment display;
    {
        QMutexLocker locker(&mMutex);
        display = mDisplayEnvironment;
    }
    result.insert(displayParameters(display));
    result.insert(calendarParameters(moment));
    return result;
}

void DefaultSignalPayload::setDisplayEnvironment(const DisplayEnvironment& environment)
{
    QMutexLocker locker(&mMutex);
    mDisplayEnvironment = environment;
}

TelemetryParameters DefaultSignalPayload::fixedParameters()
{
    QMutexLocker locker(&mMutex);
    if (!mFixedParameters) {
        mFixedParameters = computeFixedParameters(mModelNamePath);
    }
    return *mFixedParameters;
}

TelemetryParameters DefaultSignalPayload::calendarParameters(const QDateTime& moment)
{
    const QDateTime local = moment.toLocalTime();
    const QDate date = local.date();
    const QList<Qt::DayOfWeek> workingDays = QLocale::system().weekdays();
    const bool isWeekend = !workingDays.contains(static_cast<Qt::DayOfWeek>(date.dayOfWeek()));
    return {
        {QStringLiteral("Tallyhub.Calendar.dayOfMonth"), QString::number(date.day())},
        {QStringLiteral("Tallyhub.Calendar.dayOfWeek"), QString::number(date.dayOfWeek())},
        {QStringLiteral("Tallyhub.Calendar.dayOfYear"), QString::number(date.dayOfYear())},
        {QStringLiteral("Tallyhub.Calendar.weekOfYear"), QString::number(date.weekNumber())},
        {QStringLiteral("Tallyhub.Calendar.isWeekend"), boolText(isWeekend)},
        {QStringLiteral("Tallyhub.Calendar.monthOfYear"), QString::number(date.month())},
        {QStringLiteral("Tallyhub.Calendar.quarterOfYear"),
         QString::number((date.month() + 2) / 3)},
        {QStringLiteral("Tallyhub.Calendar.hourOfDay"), QString::number(local.time().hour())},
    };
}

TelemetryParameters DefaultSignalPayload::displayParameters(const DisplayEnvironment& environment)
{
    QString orientation = QStringLiteral("Unknown");
    if (environment.screenWidth > 0 && environment.screenHeight > 0) {
        orientation = environment.screenWidth >= environment.screenHeight
                          ? QStringLiteral("Landscape")
                          : QStringLiteral("Portrait");
    }
    return {
        {QStringLiteral("Tallyhub.Device.orientation"), orientation},
        {QStringLiteral("Tallyhub.Device.screenResolutionWidth"),
         QString::number(environment.screenWidth)},
        {QStringLiteral("Tallyhub.Device.screenResolutionHeight"),
         QString::number(environment.screenHeight)},
        {QStringLiteral("Tallyhub.Device.screenScaleFactor"),
         QString::number(environment.screenScaleFactor)},
        {QStringLiteral("Tallyhub.UserPreference.colorScheme"), environment.colorScheme},
        {QStringLiteral("Tallyhub.Accessibility.isReduceMotionEnabled"),
         boolText(environment.reduceMotionEnabled)},
        {QStringLiteral("Tallyhub.Accessibility.isInvertColorsEnabled"),
         boolText(environment.invertColorsEnabled)},
    };
}
