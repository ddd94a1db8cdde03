#pragma once

#include <QByteArray>
#include <QString>

#include <string>

// Text helpers over QString. Lengths and indices are UTF-16 code units; "whitespace"
// is Unicode white space plus every line break (QChar::isSpace).

using QBCharacterSet = bool (*)(QChar);

bool isWhitespaceOrNewline(QChar character);
bool isNewline(QChar character);

bool isEmpty(const QString& text);
QString stringByTrimmingLeadingCharactersInSet(const QString& text, QBCharacterSet set);
QString stringByTrimmingTrailingCharactersInSet(const QString& text, QBCharacterSet set);
QString stringByStrippingWhitespace(const QString& text);
QString stringByStrippingLeadingWhitespace(const QString& text);
QString stringByStrippingTrailingWhitespace(const QString& text);
// Keeps only the whitespace characters of |text|, in order (the name notwithstanding).
QString stringByRemovingAllWhitespace(const QString& text);

// The UTF-8 bytes; QByteArray keeps them NUL-terminated for as long as it lives.
QByteArray c_str(const QString& text);
// Letters, marks and digits plus " ,.-+_"; everything else is dropped.
QString stringValidForFileNames(const QString& text);
QString alphanumericString(const QString& text);
// Percent-escapes the UTF-8 bytes of everything but ASCII letters, digits and "-._~".
QString LMURLEncodedString(const QString& text);
QString safePercentString(const QString& text);
QString reverseString(const QString& text);

bool isValidHTTPAddress(const QString& text);
bool isValidEmail(const QString& text);
bool isValidInternetProtocolAddress(const QString& text);
bool containsString(const QString& text, const QString& other,
                    Qt::CaseSensitivity options = Qt::CaseSensitive);
bool containsStringInsensitive(const QString& text, const QString& other);

// Pieces between newline characters: "" is one line, CR LF separates twice.
int lineCount(const QString& text);
int wordCount(const QString& text);
QString substringWithLines(const QString& text, int count);
QString substringWithLastLines(const QString& text, int count);

// Jaro-Winkler similarity of the UTF-8 bytes, 0 to 100, with a prefix bonus of at most
// two bytes.
double similarityToString(const QString& text, const QString& other);

// Decodes UTF-8; invalid or incomplete sequences each become one "*".
QString stringFromUnicodeCPPString(const std::string& bytes);
