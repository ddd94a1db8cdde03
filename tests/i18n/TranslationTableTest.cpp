// The committed string tables against the code and each other.
#include "TestHome.h"

#include <QFile>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString kSourceDir = QStringLiteral(QB_SOURCE_DIR);
const QString kTablesDir = kSourceDir + u"/resources/translations"_s;

struct TableEntry
{
    QString source;
    QStringList translations; // one per plural form for a %n text
    bool finished = false;
};

QMap<QString, TableEntry> readTable(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    QMap<QString, TableEntry> table;
    QXmlStreamReader xml(&file);
    QString id;
    bool numerus = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto name = xml.name();
        if (name == "message"_L1) {
            id = xml.attributes().value("id"_L1).toString();
            numerus = xml.attributes().value("numerus"_L1) == "yes"_L1;
        } else if (name == "source"_L1) {
            table[id].source = xml.readElementText();
        } else if (name == "translation"_L1) {
            table[id].finished = xml.attributes().value("type"_L1).isEmpty();
            if (!numerus)
                table[id].translations << xml.readElementText();
        } else if (name == "numerusform"_L1) {
            table[id].translations << xml.readElementText();
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return table;
}

QStringList placeholders(const QString& text)
{
    static const QRegularExpression marker(uR"(%L?(\d+|n))"_s);
    QStringList found;
    for (const auto& match : marker.globalMatch(text))
        found << match.captured();
    found.sort();
    return found;
}

int run(const QString& program, const QStringList& arguments, QString* output = nullptr)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.waitForFinished(60000);
    if (output)
        *output = QString::fromUtf8(process.readAll());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

} // namespace

// The tables hold exactly the ids of the code (next test), so this covers every text.
TEST(TranslationTableTest, EveryIdHasItsEnglishTextAndAFinishedGermanOne)
{
    const QMap<QString, TableEntry> english = readTable(kTablesDir + u"/quillbox2_en.ts"_s);
    const QMap<QString, TableEntry> german = readTable(kTablesDir + u"/quillbox2_de.ts"_s);
    ASSERT_GT(english.size(), 80);
    EXPECT_EQ(english.keys(), german.keys());
    for (auto it = english.cbegin(); it != english.cend(); ++it) {
        const std::string name = it.key().toStdString();
        EXPECT_FALSE(it->source.trimmed().isEmpty()) << name << " has no English text";
        const TableEntry& entry = german.value(it.key());
        EXPECT_TRUE(entry.finished) << name << " is unfinished in German";
        EXPECT_EQ(entry.translations.size(),
                  it->source.contains(u"%n"_s) || it->source.contains(u"%Ln"_s) ? 2 : 1)
            << name;
        for (const QString& translation : entry.translations) {
            EXPECT_FALSE(translation.trimmed().isEmpty()) << name;
            EXPECT_EQ(placeholders(translation), placeholders(it->source)) << name;
        }
    }
}

TEST(TranslationTableTest, TheCommittedTablesAreWhatLupdateMakesOfTheCode)
{
    QBTestHome home;
    QStringList copies;
    for (const char* table : {"quillbox2_en.ts", "quillbox2_de.ts"}) {
        const QString name = QString::fromLatin1(table);
        copies << home.filePath(name);
        ASSERT_TRUE(QFile::copy(kTablesDir + u'/' + name, copies.last()));
        QFile::setPermissions(copies.last(), QFile::ReadOwner | QFile::WriteOwner);
    }
    QString output;
    ASSERT_EQ(run(QStringLiteral(QB_LUPDATE),
                  QStringList{u"-silent"_s, u"-locations"_s, u"none"_s, u"-no-obsolete"_s,
                              kSourceDir + u"/src"_s, u"-ts"_s} +
                      copies,
                  &output),
              0)
        << output.toStdString();
    for (const QString& copy : copies) {
        QFile updated(copy);
        QFile committed(kTablesDir + u'/' + QFileInfo(copy).fileName());
        ASSERT_TRUE(updated.open(QIODevice::ReadOnly) && committed.open(QIODevice::ReadOnly));
        EXPECT_TRUE(updated.readAll() == committed.readAll())
            << QFileInfo(copy).fileName().toStdString()
            << " is out of date: run the update-translations target";
    }
}
