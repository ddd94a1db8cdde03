#pragma once

#include <QByteArray>
#include <QString>

// A reference to a file the user chose, kept as opaque bytes in the settings suite and
// resolved relative to a base file (the quotes database) so that every process sharing
// the container finds the same file. The bytes are a small versioned JSON object: the
// target's path relative to the base file's folder, its absolute path, and its identity
// (device and inode), which tells a replaced file from the original. While a write is
// renaming a new file into place, the new file's identity is recorded as pending and
// counts as the bookmarked file too.
class QBFileBookmark
{
public:
    static constexpr int kFormatVersion = 1;

    struct Creation
    {
        QByteArray data; // empty on failure
        QString error;   // readable description on failure
    };
    struct Resolution
    {
        QString path;         // empty on failure
        bool isStale = false; // the file at |path| is not the one the bookmark recorded
        QString error;        // readable description on failure
        bool ok() const { return !path.isEmpty(); }
    };

    // Choosing a location grants it, so a missing target is created empty first. A
    // folder that does not exist or cannot be written is an error. A symbolic link is
    // followed once, here: the bookmark names the file itself, so a link swapped in
    // later is not followed by a writer.
    static Creation create(const QString& targetPath, const QString& baseFilePath);
    // The relative path against the base file's folder, else the absolute path.
    // Undecodable data or a missing file is an error; another file there is stale.
    static Resolution resolve(const QByteArray& data, const QString& baseFilePath);

    // Whether |data| records the file with this device and inode (or has it pending).
    static bool recordsIdentity(const QByteArray& data, quint64 device, quint64 inode);
    // |data| with the device and inode replaced: the same location now holds a new file
    // that the caller put there itself.
    // Any pending identity is dropped.
    static QByteArray withIdentity(const QByteArray& data, quint64 device, quint64 inode);
    // |data| with this device and inode pending: a new file about to be renamed into place.
    static QByteArray withPendingIdentity(const QByteArray& data, quint64 device, quint64 inode);

    // Access needs no grant on Linux; these keep their place around every use.
    static void startAccessingSecurityScopedResource(const QString& path);
    static void stopAccessingSecurityScopedResource(const QString& path);
};
