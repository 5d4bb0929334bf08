#include "snapshot/document_limits.h"

#include <QTextCodec>

#include <algorithm>

namespace {

// The XML reader compares each attribute of a tag with every other. Snapshots have none at all.
constexpr int LongestTag = 1024;
// A snapshot has 44.
constexpr int MostTags = 1000;
constexpr int Refused = -1;

struct Delimiters
{
    QLatin1String opening;
    QLatin1String closing;
};

/// Answers where the tag that starts at @p start ends; a ">" inside quotes is part of a value.
int endOfTag(const QString &text, int start)
{
    const int limit = std::min(text.size(), start + LongestTag);
    QChar quote;
    for (int i = start; i < limit; ++i) {
        const QChar character = text.at(i);
        if (!quote.isNull()) {
            if (character == quote)
                quote = QChar();
        } else if (character == QLatin1Char('"') || character == QLatin1Char('\'')) {
            quote = character;
        } else if (character == QLatin1Char('>')) {
            return i + 1;
        }
    }
    return limit == text.size() ? limit : Refused;
}

/// Answers where the markup that starts at @p start ends, or Refused.
int endOfMarkup(const QString &text, int start)
{
    static constexpr Delimiters Plain[] = {{QLatin1String("<!--", 4), QLatin1String("-->", 3)},
                                           {QLatin1String("<![CDATA[", 9), QLatin1String("]]>", 3)},
                                           {QLatin1String("<?", 2), QLatin1String("?>", 2)}};
    const QStringRef rest = text.midRef(start);
    for (const Delimiters &plain : Plain) {
        if (rest.startsWith(plain.opening)) {
            const int closing = text.indexOf(plain.closing, start + plain.opening.size());
            return closing < 0 ? text.size() : closing + plain.closing.size();
        }
    }
    // What is left of "<!" is a document type, whose entities can blow up a small document.
    return rest.startsWith(QLatin1String("<!")) ? Refused : endOfTag(text, start);
}

bool isWithinLimits(const QString &text)
{
    int tags = 0;
    int end = 0;
    for (int start = text.indexOf(QLatin1Char('<')); start >= 0;
         start = text.indexOf(QLatin1Char('<'), end)) {
        end = endOfMarkup(text, start);
        if (end == Refused || ++tags > MostTags)
            return false;
    }
    return true;
}

} // namespace

QString readableText(const QByteArray &document)
{
    if (document.size() > LargestSnapshot)
        return QString();
    QTextCodec::ConverterState state;
    const QString text
        = QTextCodec::codecForName("UTF-8")->toUnicode(document.constData(), document.size(), &state);
    return state.invalidChars == 0 && isWithinLimits(text) ? text : QString();
}
