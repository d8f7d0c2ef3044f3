#pragma once

#include "host/ContextElement.h"
#include "host/HostExport.h"
#include "host/XmlTags.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class QXmlStreamReader;
class QXmlStreamAttributes;

namespace scenariomatch
{

// What is wrong in a context file, and where; line and column count from 1.
struct ContextError
{
    std::string fileName;
    qint64 line = 0;
    qint64 column = 0;
    std::string reason;

    // "file:line:column: reason"
    std::string text() const { return place() + ": " + reason; }

    std::string place() const
    {
        return fileName + ":" + std::to_string(line) + ":" + std::to_string(column);
    }
};

// What a context file may hold at most.
struct ContextLimits
{
    qint64 fileBytes = qint64{64} * 1024 * 1024;
    // Characters that one XML entity may expand to.
    int entityCharacters = 4096;
    // Of one tag.
    int attributes = kMostXmlAttributes;
    std::size_t elements = 100'000;
    std::size_t verticesPerElement = 100'000;
    // Problems that are kept; the others are counted.
    std::size_t errors = 100;
};

} // namespace scenariomatch

// Reads the fixed elements of a scene from a context file:
//
//     <Context name="lobby">
//       <Element kind="zone" name="Entrance" shape="polygon">
//         <Vertex x="0" y="0" z="0"/> <Vertex x="4" y="0" z="0"/> <Vertex x="4" y="3" z="0"/>
//       </Element>
//       <Element kind="object" name="Desk" shape="circle" height="1.1" radius="0.6"><Vertex x="2"
//       y="3"/></Element> <Element kind="wall" name="North" shape="polygon" height="2.5"><Vertex
//       x="0" y="9"/><Vertex x="9" y="9"/></Element>
//     </Context>
//
// An element that cannot be used (a bad number, too few vertices) is left out and reported; the
// others stay. A zone and an object need three vertices as polygons, a wall two, a circle one. What
// is not well-formed, not a context or beyond the limits is refused as a whole.
//
// Example:
//     rhmDataContext context;
//     if (!context.read(QStringLiteral("lobby.xml"))) {
//         for (const auto& error : context.errors()) { std::cerr << error.text() << '\n'; }
//     }
class CS_HOST_EXPORT rhmDataContext
{
public:
    rhmDataContext();
    explicit rhmDataContext(const scenariomatch::ContextLimits& limits);
    rhmDataContext(const rhmDataContext&) = delete;
    rhmDataContext(rhmDataContext&&) = delete;
    rhmDataContext& operator=(const rhmDataContext&) = delete;
    rhmDataContext& operator=(rhmDataContext&&) = delete;
    virtual ~rhmDataContext();

    // Replaces what was read before. False, with no elements, when the file is refused as a whole.
    virtual bool read(const QString& fileName);

    // The same for text in memory; the file name serves the messages.
    bool readText(const QByteArray& text, const QString& fileName);

    const std::vector<ContextElement>& getContext() const { return m_elements; }

    // Problems in order of the file, at most ContextLimits::errors of them.
    const std::vector<scenariomatch::ContextError>& errors() const { return m_errors; }

    // Problems found beyond those.
    std::size_t unreportedErrors() const { return m_unreportedErrors; }

private:
    struct Place
    {
        qint64 line = 1;
        qint64 column = 1;
    };

    void clear(const QString& fileName);
    Place placeOf(qint64 offset) const;
    bool refuse(Place place, const std::string& reason);
    void report(Place place, const std::string& reason);
    void reportAt(qint64 offset, const std::string& reason);
    bool readContext(QXmlStreamReader& xml);
    bool readElement(QXmlStreamReader& xml);
    bool readVertices(QXmlStreamReader& xml, ContextElement& element, bool& isSound);
    // The attribute's value; 0 when it is absent and not required; nothing, and a report, when it
    // is no number.
    std::optional<double>
    number(const QXmlStreamAttributes& attributes, QStringView name, bool isRequired);
    bool nextStartElement(QXmlStreamReader& xml);

    scenariomatch::ContextLimits m_limits;
    std::string m_fileName;
    std::vector<ContextElement> m_elements;
    std::vector<scenariomatch::ContextError> m_errors;
    std::size_t m_unreportedErrors = 0;
    // What is being read, and where in it the start tag stands that was read last.
    QString m_text;
    qint64 m_tag = 0;
};
