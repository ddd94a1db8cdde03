#include "TestHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>

#include <cstdlib>
#include <stdexcept>

namespace {
const char* const kVariables[] = {"HOME",           "XDG_DATA_HOME",  "XDG_CONFIG_HOME",
                                  "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"};

QString subfolderFor(const std::string& variable)
{
    if (variable == "HOME") {
        return QStringLiteral("home");
    }
    return QString::fromStdString(variable).toLower();
}
} // namespace

QBTestHome::QBTestHome()
{
    if (!mDir.isValid()) {
        throw std::runtime_error("cannot create a temporary folder for the test home");
    }
    for (const char* variable : kVariables) {
        const char* previous = std::getenv(variable);
        mSaved[variable] = previous ? std::optional<std::string>(previous) : std::nullopt;
        const QString folder = mDir.filePath(subfolderFor(variable));
        QDir().mkpath(folder);
        QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                          QFileDevice::ExeOwner);
        ::setenv(variable, folder.toLocal8Bit().constData(), 1);
    }
}

QBTestHome::~QBTestHome()
{
    for (const auto& [variable, value] : mSaved) {
        if (value) {
            ::setenv(variable.c_str(), value->c_str(), 1);
        } else {
            ::unsetenv(variable.c_str());
        }
    }
}

QByteArray readFileBytes(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return file.readAll();
}

bool writeFileBytes(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size();
}

QByteArray encodedText(const QString& text, QStringConverter::Encoding encoding, bool byteOrderMark)
{
    QStringEncoder encoder(encoding, byteOrderMark ? QStringConverter::Flag::WriteBom
                                                   : QStringConverter::Flag::Default);
    QByteArray bytes = encoder.encode(text);
    return bytes;
}
