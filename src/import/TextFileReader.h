#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

// Reads a whole file as text, working out its encoding from the bytes alone: a
// byte-order mark decides; else valid UTF-8 is UTF-8; else zero bytes in every other
// position mean UTF-16 without a mark; else a file with zero bytes or other binary
// control bytes is not text; anything left is Windows-1252 (a UTF-8 file whose last
// character is cut off stays UTF-8). docs/import.md has the reasons. Only a regular file
// is read, opened without blocking; one that changes while it is read is read again,
// and refused when it keeps changing.
class QBTextFileReader
{
public:
    // Larger files are refused before a byte is read: decoding and splitting them
    // would keep the window busy for too long.
    static constexpr std::int64_t kMaxFileSize = 64 * 1024 * 1024;

    enum class Status
    {
        Ok,
        NotText,  // unreadable, undecodable or binary
        TooLarge, // over kMaxFileSize
    };

    struct Result
    {
        Status status = Status::NotText;
        QString text;     // the decoded text when status is Ok
        QString encoding; // e.g. "UTF-8", "UTF-16LE", "Windows-1252"
        QString error;    // a readable reason otherwise

        bool ok() const { return status == Status::Ok; }
    };

    QBTextFileReader() = delete;

    static Result readTextFile(const QString& path);
    static Result decodeText(const QByteArray& bytes);
    // Windows-1252 to text: Latin-1 with the printable characters of 0x80-0x9F.
    static QString fromWindows1252(QByteArrayView bytes);
};
