#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QStringView>

class QBUserDefaults;

// What shapes a signature: the user's text around the quote and the fit rules.
struct QBSignatureSettings
{
    // Stands for the quote in the template.
    static inline const QString kQuotePlaceholder = QStringLiteral("{quote}");

    QString templateText = kQuotePlaceholder;
    int wrapColumn = 0; // 0: the quote's lines are not wrapped
    int maxLines = 0;   // 0: no limit
    bool html = false;  // an HTML fragment instead of plain text

    // The settings stored in |defaults| (the application's or the suite the helper reads).
    // A template without the placeholder, which the settings page refuses, reads as the
    // quote alone; HTML when the signature file's name ends in .html or .htm.
    static QBSignatureSettings fromDefaults(const QBUserDefaults& defaults);
    static bool isUsableTemplate(const QString& templateText);
    static bool isHtmlPath(const QString& path);

    bool operator==(const QBSignatureSettings&) const = default;
};

// One composed signature.
struct QBComposedSignature
{
    QString text;       // the template with the (wrapped) quote in it, before any HTML
    QByteArray bytes;   // what the signature file or standard output receives
    int quoteLines = 0; // lines the quote takes after wrapping
    bool fits = true;   // within the line limit
};

// Turns a quote into the signature: the only place that does, so the application, the
// helper's rotation and its command line write the same bytes. Qt Core only.
class QBSignatureComposer
{
public:
    static QBComposedSignature compose(const QString& quote, const QBSignatureSettings& settings);
    // Whether |quote| keeps within the line limit; cheaper than compose().
    static bool fits(const QString& quote, const QBSignatureSettings& settings);

    // |quote|'s lines, each wrapped at spaces to |column| terminal cells (0: unwrapped).
    // A word wider than the column stays whole on a line of its own.
    static QStringList wrappedLines(const QString& quote, int column);
    // The lines a quote takes: a final line break starts no line of its own.
    static int lineCount(const QStringList& lines);
    // Terminal cells a text takes: East Asian wide characters two, combining marks and
    // other zero-width characters none, everything else one.
    static int displayWidth(QStringView text);
    static int displayWidth(char32_t codePoint);
};
