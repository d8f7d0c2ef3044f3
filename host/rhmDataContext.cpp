#include "host/rhmDataContext.h"

#include "host/XmlTags.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QXmlStreamReader>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace
{

std::size_t leastVertices(const ContextElement& element)
{
    if (element.shape == "circle") {
        return element.kind == "object" ? 1 : 0;
    }
    if (element.shape != "polygon") {
        return 0;
    }
    if (element.kind == "wall") {
        return 2;
    }
    return element.kind == "zone" || element.kind == "object" ? 3 : 0;
}

std::optional<double> finiteNumber(std::string_view text)
{
    double value = 0.0;
    const auto* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

// The characters of an XML text in one of the encodings of Unicode.
QString decoded(const QByteArray& text)
{
    const auto encoding = QStringConverter::encodingForData(text);
    QStringDecoder decoder(encoding.value_or(QStringConverter::Utf8));
    return decoder.decode(text);
}

std::string quoted(QStringView text)
{
    return "\"" + text.toString().toStdString() + "\"";
}

} // namespace

rhmDataContext::rhmDataContext() = default;

rhmDataContext::rhmDataContext(const scenariomatch::ContextLimits& limits)
    : m_limits(limits)
{
}

rhmDataContext::~rhmDataContext() = default;

bool rhmDataContext::read(const QString& fileName)
{
    clear(fileName);
    if (fileName.isEmpty()) {
        return refuse({}, "no file is named");
    }
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile() && !info.isDir()) {
        // A pipe into which nobody writes would be waited for.
        return refuse({}, "it is no ordinary file");
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return refuse({}, file.errorString().toStdString());
    }
    // One byte more than allowed tells a file that is too large.
    const QByteArray text = file.read(m_limits.fileBytes + 1);
    if (file.error() != QFileDevice::NoError) {
        return refuse({}, file.errorString().toStdString());
    }
    return readText(text, fileName);
}

bool rhmDataContext::readText(const QByteArray& text, const QString& fileName)
{
    clear(fileName);
    if (text.size() > m_limits.fileBytes) {
        return refuse({}, "larger than " + std::to_string(m_limits.fileBytes) + " bytes");
    }
    // The reader's own idea of the place lies behind the tag; with the characters at hand the tag's
    // start is found.
    m_text = decoded(text);
    if (const auto crowded = scenariomatch::findCrowdedTag(m_text, m_limits.attributes)) {
        const Place place = placeOf(*crowded);
        m_text.clear();
        return refuse(
            place, "a tag has more than " + std::to_string(m_limits.attributes) + " attributes");
    }
    QXmlStreamReader xml(m_text);
    xml.setEntityExpansionLimit(m_limits.entityCharacters);
    const bool isRead = readContext(xml);
    m_text.clear();
    if (xml.hasError()) {
        return refuse({xml.lineNumber(), xml.columnNumber() + 1}, xml.errorString().toStdString());
    }
    return isRead;
}

rhmDataContext::Place rhmDataContext::placeOf(qint64 offset) const
{
    const QStringView before = QStringView(m_text).left(offset);
    return {1 + before.count(u'\n'), offset - before.lastIndexOf(u'\n')};
}

void rhmDataContext::clear(const QString& fileName)
{
    m_fileName = fileName.toStdString();
    m_elements.clear();
    m_errors.clear();
    m_unreportedErrors = 0;
}

bool rhmDataContext::refuse(Place place, const std::string& reason)
{
    m_elements.clear();
    report(place, reason);
    return false;
}

void rhmDataContext::report(Place place, const std::string& reason)
{
    if (m_errors.size() == m_limits.errors) {
        ++m_unreportedErrors;
        return;
    }
    m_errors.push_back({m_fileName, place.line, place.column, reason});
}

// Telling a place takes time: not for what is counted only.
void rhmDataContext::reportAt(qint64 offset, const std::string& reason)
{
    const bool isKept = m_errors.size() < m_limits.errors;
    report(isKept ? placeOf(offset) : Place(), reason);
}

bool rhmDataContext::nextStartElement(QXmlStreamReader& xml)
{
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::EndElement) {
            return false;
        }
        if (token == QXmlStreamReader::StartElement) {
            // No "<" can stand inside a tag.
            const auto last = std::min<qint64>(xml.characterOffset(), m_text.size()) - 1;
            m_tag = std::max<qint64>(0, m_text.lastIndexOf(u'<', last));
            return true;
        }
    }
    return false;
}

bool rhmDataContext::readContext(QXmlStreamReader& xml)
{
    if (!nextStartElement(xml)) {
        return false;
    }
    if (xml.name() != QStringLiteral("Context")) {
        return refuse(
            placeOf(m_tag),
            "<Context> is expected, not <" + xml.name().toString().toStdString() + ">");
    }
    while (nextStartElement(xml)) {
        if (xml.name() != QStringLiteral("Element")) {
            reportAt(m_tag, "<" + xml.name().toString().toStdString() + "> is not known here");
            xml.skipCurrentElement();
        } else if (!readElement(xml)) {
            return false;
        }
    }
    while (!xml.atEnd()) {
        xml.readNext();
    }
    return !xml.hasError();
}

bool rhmDataContext::readElement(QXmlStreamReader& xml)
{
    const qint64 tag = m_tag;
    const auto attributes = xml.attributes();
    ContextElement element;
    element.kind = attributes.value(QStringLiteral("kind")).toString().toStdString();
    element.name = attributes.value(QStringLiteral("name")).toString().toStdString();
    element.shape = attributes.value(QStringLiteral("shape")).toString().toStdString();
    const auto height = number(attributes, u"height", false);
    const auto radius = number(attributes, u"radius", false);
    bool isSound = height.has_value() && radius.has_value();
    element.height = height.value_or(0.0);
    element.radius = radius.value_or(0.0);
    if (element.kind.empty()) {
        reportAt(tag, "the element has no kind");
        isSound = false;
    }
    if (!readVertices(xml, element, isSound) || xml.hasError()) {
        return false;
    }
    if (isSound && element.vertices.size() < leastVertices(element)) {
        reportAt(
            tag,
            "the element " + quoted(QString::fromStdString(element.name)) + " has " +
                std::to_string(element.vertices.size()) + " vertices and needs " +
                std::to_string(leastVertices(element)));
        isSound = false;
    }
    if (!isSound) {
        return true;
    }
    if (m_elements.size() == m_limits.elements) {
        return refuse(placeOf(tag), "more than " + std::to_string(m_limits.elements) + " elements");
    }
    m_elements.push_back(std::move(element));
    return true;
}

bool rhmDataContext::readVertices(QXmlStreamReader& xml, ContextElement& element, bool& isSound)
{
    while (nextStartElement(xml)) {
        if (xml.name() != QStringLiteral("Vertex")) {
            reportAt(m_tag, "<" + xml.name().toString().toStdString() + "> is not known here");
            xml.skipCurrentElement();
            continue;
        }
        if (element.vertices.size() == m_limits.verticesPerElement) {
            return refuse(
                placeOf(m_tag),
                "more than " + std::to_string(m_limits.verticesPerElement) +
                    " vertices in an element");
        }
        const auto attributes = xml.attributes();
        const auto x = number(attributes, u"x", true);
        const auto y = number(attributes, u"y", true);
        const auto z = number(attributes, u"z", false);
        isSound = isSound && x.has_value() && y.has_value() && z.has_value();
        element.vertices.push_back({x.value_or(0.0), y.value_or(0.0), z.value_or(0.0)});
        xml.skipCurrentElement();
    }
    return true;
}

std::optional<double>
rhmDataContext::number(const QXmlStreamAttributes& attributes, QStringView name, bool isRequired)
{
    const QString key = name.toString();
    if (!attributes.hasAttribute(key)) {
        if (!isRequired) {
            return 0.0;
        }
        reportAt(m_tag, "the attribute " + quoted(name) + " is missing");
        return std::nullopt;
    }
    const auto text = attributes.value(key);
    const auto value = finiteNumber(text.toString().toStdString());
    if (!value.has_value()) {
        reportAt(m_tag, "the attribute " + quoted(name) + " is no finite number: " + quoted(text));
    }
    return value;
}
