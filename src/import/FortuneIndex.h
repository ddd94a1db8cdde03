#pragma once

#include <QChar>
#include <QString>

#include <optional>

// The index `strfile` writes beside a fortune file ("wisdom" has "wisdom.dat"). Its
// header says the file is a fortune file even when it holds no "%" line (a single
// quote), which character separates the quotes, and whether the text is ROT13-encoded
// (the offensive collections).
struct QBFortuneIndex
{
    quint32 quoteCount = 0;
    QChar delimiter = u'%';
    bool rotated = false;

    // The index of the fortune file at |path|, when one lies beside it and is sound.
    static std::optional<QBFortuneIndex> readBeside(const QString& path);
    // A header of at least 24 bytes from an index file of |indexSize| bytes.
    static std::optional<QBFortuneIndex> parse(QByteArrayView header, qint64 indexSize);

    // ROT13 undone (or done: it is its own inverse) on the ASCII letters.
    static QString unrotated(QString text);
};
