#include "import/FortuneIndex.h"

#include "util/RegularFile.h"

#include <QFile>
#include <QtEndian>

namespace {

// version, count, longest, shortest, flags (big-endian 32-bit words), delimiter, padding;
// then one 32-bit offset per quote and one for the end of the file.
constexpr qsizetype kHeaderSize = 24;
constexpr quint32 kRotatedFlag = 0x4;

quint32 word(QByteArrayView header, qsizetype index)
{
    return qFromBigEndian<quint32>(header.data() + index * 4);
}

} // namespace

std::optional<QBFortuneIndex> QBFortuneIndex::parse(QByteArrayView header, qint64 indexSize)
{
    if (header.size() < kHeaderSize)
        return std::nullopt;
    const quint32 version = word(header, 0);
    const quint32 count = word(header, 1);
    const auto delimiter = static_cast<unsigned char>(header[20]);
    // The size check keeps any other file that happens to be called "*.dat" out.
    const bool sound = (version == 1 || version == 2) &&
                       indexSize == kHeaderSize + 4 * (qint64(count) + 1) && delimiter > 0x20 &&
                       delimiter < 0x7F;
    if (!sound)
        return std::nullopt;
    QBFortuneIndex index;
    index.quoteCount = count;
    index.delimiter = QChar(char16_t(delimiter));
    index.rotated = (word(header, 4) & kRotatedFlag) != 0;
    return index;
}

std::optional<QBFortuneIndex> QBFortuneIndex::readBeside(const QString& path)
{
    QFile file;
    QString error;
    if (!openRegularFileForReading(file, path + QStringLiteral(".dat"), error))
        return std::nullopt;
    return parse(file.read(kHeaderSize), file.size());
}

QString QBFortuneIndex::unrotated(QString text)
{
    for (QChar& character : text) {
        const char16_t unit = character.unicode();
        if (unit >= u'a' && unit <= u'z')
            character = QChar(u'a' + (unit - u'a' + 13) % 26);
        else if (unit >= u'A' && unit <= u'Z')
            character = QChar(u'A' + (unit - u'A' + 13) % 26);
    }
    return text;
}
