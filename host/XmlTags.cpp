#include "host/XmlTags.h"

#include <array>

namespace scenariomatch
{

namespace
{

struct Bracket
{
    QStringView open;
    QStringView close;
};

// What is no tag although it begins like one.
constexpr std::array<Bracket, 3> kBrackets{
    {{u"<!--", u"-->"}, {u"<![CDATA[", u"]]>"}, {u"<?", u"?>"}}};

qsizetype endOr(qsizetype position, QStringView text)
{
    return position < 0 ? text.size() : position;
}

// The end of what begins at a "<" and is no tag; its begin when it is one.
qsizetype skipBracket(QStringView text, qsizetype begin)
{
    for (const Bracket& bracket : kBrackets) {
        if (text.mid(begin).startsWith(bracket.open)) {
            return endOr(text.indexOf(bracket.close, begin + bracket.open.size()), text);
        }
    }
    return begin;
}

// Steps over a tag and counts its attributes.
int countAttributes(QStringView text, qsizetype& position)
{
    int attributes = 0;
    for (++position; position < text.size() && text[position] != u'>'; ++position) {
        const QChar character = text[position];
        if (character == u'"' || character == u'\'') {
            position = endOr(text.indexOf(character, position + 1), text);
        } else if (character == u'<') {
            // Not well-formed, and perhaps a tag in earnest.
            --position;
            break;
        } else {
            attributes += character == u'=' ? 1 : 0;
        }
    }
    return attributes;
}

} // namespace

std::optional<qsizetype> findCrowdedTag(QStringView text, int mostAttributes)
{
    qsizetype position = text.indexOf(u'<');
    while (position >= 0 && position < text.size()) {
        const qsizetype begin = position;
        position = skipBracket(text, begin);
        if (position == begin && countAttributes(text, position) > mostAttributes) {
            return begin;
        }
        position = text.indexOf(u'<', position + 1);
    }
    return std::nullopt;
}

} // namespace scenariomatch
