#include "import/TextFileReader.h"

#include "util/RegularFile.h"

#include <QDateTime>
#include <QFile>
#include <QStringDecoder>

#include <array>
#include <optional>

namespace {

using Result = QBTextFileReader::Result;
using Encoding = QStringConverter::Encoding;

struct ByteOrderMark
{
    QByteArrayView bytes;
    Encoding encoding;
    const char* name;
};

// UTF-32 LE first: its mark begins with the UTF-16 LE one.
const std::array<ByteOrderMark, 5> kByteOrderMarks{{
    {QByteArrayView("\xEF\xBB\xBF", 3), Encoding::Utf8, "UTF-8"},
    {QByteArrayView("\xFF\xFE\0\0", 4), Encoding::Utf32LE, "UTF-32LE"},
    {QByteArrayView("\0\0\xFE\xFF", 4), Encoding::Utf32BE, "UTF-32BE"},
    {QByteArrayView("\xFF\xFE", 2), Encoding::Utf16LE, "UTF-16LE"},
    {QByteArrayView("\xFE\xFF", 2), Encoding::Utf16BE, "UTF-16BE"},
}};

// The characters of 0x80-0x9F; the five bytes the code page leaves undefined keep
// their Latin-1 (C1 control) value, as browsers decode them.
constexpr std::array<char16_t, 32> kWindows1252High{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

Result failure(QBTextFileReader::Status status, QString error)
{
    Result result;
    result.status = status;
    result.error = std::move(error);
    return result;
}

Result notText(QString error)
{
    return failure(QBTextFileReader::Status::NotText, std::move(error));
}

// Control characters that plain text rarely holds. Tab, the line breaks, SUB (an old
// end-of-file mark) and ESC (terminal colours) are not counted at all.
bool isBinaryControl(char16_t unit)
{
    return unit < 0x20 && unit != u'\t' && unit != u'\n' && unit != u'\v' && unit != u'\f' &&
           unit != u'\r' && unit != 0x1A && unit != 0x1B;
}

// Old text files do hold a few: fortune files underline with backspaces and ring the bell
// (0.01% to 0.1% of their characters). Binary data without zero bytes has about one in
// ten; one in a hundred tells them apart.
constexpr qsizetype kMaxControlsPerHundredCharacters = 1;

Result checkedText(QString text, const char* encoding)
{
    qsizetype controls = 0;
    qsizetype first = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        if (isBinaryControl(text[index].unicode()) && controls++ == 0)
            first = index;
    }
    if (controls * 100 > text.size() * kMaxControlsPerHundredCharacters)
        return notText(QStringLiteral("the file holds binary data (%1 control characters in %2, "
                                      "the first 0x%3 at character %4)")
                           .arg(controls)
                           .arg(text.size())
                           .arg(text[first].unicode(), 2, 16, QLatin1Char('0'))
                           .arg(first + 1));
    Result result;
    result.status = QBTextFileReader::Status::Ok;
    result.text = std::move(text);
    result.encoding = QString::fromLatin1(encoding);
    return result;
}

qsizetype codeUnitSize(Encoding encoding)
{
    switch (encoding) {
    case Encoding::Utf16LE:
    case Encoding::Utf16BE:
        return 2;
    case Encoding::Utf32LE:
    case Encoding::Utf32BE:
        return 4;
    default:
        return 1;
    }
}

// Strict decoding: any invalid or incomplete sequence fails. Qt's decoders flag a cut-off
// UTF-8 sequence but silently drop a cut-off UTF-16 or UTF-32 code unit.
std::optional<QString> decodeStrictly(QByteArrayView bytes, Encoding encoding)
{
    if (bytes.size() % codeUnitSize(encoding) != 0)
        return std::nullopt;
    // ConvertInitialBom: a mark already removed must not take a second one with it.
    QStringDecoder decoder(encoding, QStringConverter::Flag::Stateless |
                                         QStringConverter::Flag::ConvertInitialBom);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

Result decodeAs(QByteArrayView bytes, Encoding encoding, const char* name, const char* what)
{
    std::optional<QString> text = decodeStrictly(bytes, encoding);
    if (!text)
        return notText(QStringLiteral("the file %1 but is not valid %2 text")
                           .arg(QLatin1String(what), QLatin1String(name)));
    return checkedText(std::move(*text), name);
}

// UTF-16 of mostly Latin text has a zero byte in nearly every code unit, always on the
// same side; other scripts still have one in every space, digit and line break. Binary
// data has zero bytes on both sides, and a text file with a stray zero byte only a few.
std::optional<Encoding> utf16ByZeroBytes(QByteArrayView bytes)
{
    qsizetype evenZeros = 0;
    qsizetype oddZeros = 0;
    for (qsizetype index = 0; index + 1 < bytes.size(); index += 2) {
        evenZeros += bytes[index] == '\0' ? 1 : 0;
        oddZeros += bytes[index + 1] == '\0' ? 1 : 0;
    }
    const qsizetype units = bytes.size() / 2;
    const auto oneSided = [units](qsizetype zeros, qsizetype otherZeros) {
        return zeros > 0 && zeros * 32 >= units && otherZeros * 16 <= zeros;
    };
    if (oneSided(oddZeros, evenZeros))
        return Encoding::Utf16LE;
    if (oneSided(evenZeros, oddZeros))
        return Encoding::Utf16BE;
    return std::nullopt;
}

// How many bytes at the end begin a UTF-8 sequence that the end cuts short; 0 if none.
qsizetype cutOffUtf8Tail(QByteArrayView bytes)
{
    for (qsizetype back = 1; back <= 3 && back <= bytes.size(); ++back) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
        if ((byte & 0xC0) == 0x80)
            continue; // a continuation byte: the lead is further back
        const qsizetype length = (byte & 0xE0) == 0xC0   ? 2
                                 : (byte & 0xF0) == 0xE0 ? 3
                                 : (byte & 0xF8) == 0xF0 ? 4
                                                         : 0;
        return length > back ? back : 0;
    }
    return 0;
}

} // namespace

QString QBTextFileReader::fromWindows1252(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    char16_t* out = reinterpret_cast<char16_t*>(text.data());
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        *out++ = (value >= 0x80 && value <= 0x9F) ? kWindows1252High[value - 0x80] : value;
    }
    return text;
}

QBTextFileReader::Result QBTextFileReader::decodeText(const QByteArray& bytes)
{
    for (const ByteOrderMark& mark : kByteOrderMarks) {
        if (bytes.startsWith(mark.bytes))
            return decodeAs(QByteArrayView(bytes).sliced(mark.bytes.size()), mark.encoding,
                            mark.name, "starts with a byte-order mark");
    }
    if (bytes.contains('\0')) {
        if (const std::optional<Encoding> utf16 = utf16ByZeroBytes(bytes)) {
            const bool little = *utf16 == Encoding::Utf16LE;
            return decodeAs(bytes, *utf16, little ? "UTF-16LE" : "UTF-16BE",
                            "looks like UTF-16 without a byte-order mark");
        }
        return notText(QStringLiteral("the file holds binary data (zero bytes)"));
    }
    if (std::optional<QString> utf8 = decodeStrictly(bytes, Encoding::Utf8))
        return checkedText(std::move(*utf8), "UTF-8");
    // A file cut off in the middle of its last character is still UTF-8; the cut
    // character shows as U+FFFD instead of turning every other one into mojibake.
    const qsizetype cut = cutOffUtf8Tail(bytes);
    if (cut > 0) {
        if (std::optional<QString> utf8 =
                decodeStrictly(bytes.first(bytes.size() - cut), Encoding::Utf8))
            return checkedText(*utf8 + QChar(QChar::ReplacementCharacter), "UTF-8");
    }
    return checkedText(fromWindows1252(bytes), "Windows-1252");
}

QBTextFileReader::Result QBTextFileReader::readTextFile(const QString& path)
{
    const auto tooLarge = [] {
        return failure(
            Status::TooLarge,
            QStringLiteral("the file is larger than %1 MiB").arg(kMaxFileSize / (1024 * 1024)));
    };
    // A file that another program is still writing is read again; one that keeps
    // changing is refused rather than split from a mix of two versions.
    constexpr int kAttempts = 3;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        QFile file;
        QString error;
        if (!openRegularFileForReading(file, path, error))
            return notText(QStringLiteral("cannot open '%1': %2").arg(path, error));
        const qint64 size = file.size();
        const QDateTime modified = file.fileTime(QFileDevice::FileModificationTime);
        if (size > kMaxFileSize)
            return tooLarge();
        // One byte more than the size shows a file that grew meanwhile.
        const QByteArray bytes = file.read(size + 1);
        if (file.error() != QFileDevice::NoError)
            return notText(QStringLiteral("cannot read '%1': %2").arg(path, file.errorString()));
        if (bytes.size() == size && file.size() == size &&
            file.fileTime(QFileDevice::FileModificationTime) == modified)
            return decodeText(bytes);
    }
    return notText(QStringLiteral("'%1' changed while it was read; try again once the program "
                                  "writing it has finished")
                       .arg(path));
}
