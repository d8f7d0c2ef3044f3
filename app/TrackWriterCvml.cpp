#include "app/TrackWriterCvml.h"

#include <fmt/format.h>
#include <iterator>
#include <ostream>
#include <string_view>

namespace scenariomatch
{

namespace
{

// Readers give groups, whose ids are counted apart from the objects', ids from here on.
constexpr int kFirstGroupId = 10'000;

void appendBox(std::string& text, const TrackBox& box)
{
    fmt::format_to(
        std::back_inserter(text),
        "    <box h=\"{}\" w=\"{}\" xc=\"{}\" yc=\"{}\"/>\n"
        "    <appearance>visible</appearance>\n",
        box.height,
        box.width,
        box.x + box.width / 2.0,
        box.y + box.height / 2.0);
}

void appendHypothesis(std::string& text, std::string_view role)
{
    fmt::format_to(
        std::back_inserter(text),
        "    <hypothesislist>\n"
        "     <hypothesis evaluation=\"1.0\" id=\"1\" prev=\"1.0\">\n"
        "      <movement evaluation=\"1.0\">none</movement>\n"
        "      <role evaluation=\"1.0\">{}</role>\n"
        "      <context evaluation=\"1.0\">none</context>\n"
        "      <situation evaluation=\"1.0\">none</situation>\n"
        "     </hypothesis>\n"
        "    </hypothesislist>\n",
        role);
}

void appendObjects(std::string& text, const TrackFrame& frame)
{
    text += "  <objectlist>\n";
    for (const TrackedActor& actor : frame.actors) {
        if (actor.type != "GROUP") {
            fmt::format_to(std::back_inserter(text), "   <object id=\"{}\">\n", actor.id);
            text += "    <orientation>0</orientation>\n";
            appendBox(text, actor.box);
            appendHypothesis(text, actor.type == "BAG" ? "leaving object" : "walker");
            text += "   </object>\n";
        }
    }
    text += "  </objectlist>\n";
}

void appendGroups(std::string& text, const TrackFrame& frame)
{
    text += "  <grouplist>\n";
    for (const TrackedActor& actor : frame.actors) {
        if (actor.type == "GROUP") {
            const int id = actor.id >= kFirstGroupId ? actor.id - kFirstGroupId : actor.id;
            fmt::format_to(std::back_inserter(text), "   <group id=\"{}\">\n", id);
            text += "    <orientation>0</orientation>\n";
            appendBox(text, actor.box);
            text += "    <members></members>\n";
            appendHypothesis(text, "walkers");
            text += "   </group>\n";
        }
    }
    text += "  </grouplist>\n";
}

} // namespace

TrackWriterCvml::TrackWriterCvml(std::ostream& out)
    : m_out(out)
{
}

void TrackWriterCvml::startFile()
{
    if (!m_isStarted) {
        m_out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<dataset name=\"scene\">\n";
        m_isStarted = true;
    }
}

void TrackWriterCvml::write(const TrackFrame& frame)
{
    startFile();
    m_text.clear();
    fmt::format_to(std::back_inserter(m_text), " <frame number=\"{}\">\n", frame.number);
    appendObjects(m_text, frame);
    appendGroups(m_text, frame);
    m_text += " </frame>\n";
    m_out.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
}

void TrackWriterCvml::finish()
{
    startFile();
    m_out << "</dataset>\n";
    m_out.flush();
}

} // namespace scenariomatch
