#include "plugin/EventXml.h"

#include "plugin/BoundAgent.h"

#include <cstddef>
#include <cstdint>

namespace scenariomatch
{

namespace
{

void appendTimeFields(StreamText& text, const CSTimeStamp& time)
{
    text << "frameID=\"" << time.m_frameID << "\" timeYear=\"" << time.m_year << "\" timeMonth=\""
         << time.m_month << "\" timeDay=\"" << time.m_day << "\" timeHour=\"" << time.m_hour
         << "\" timeMin=\"" << time.m_minute << "\" timeSec=\"" << time.m_second << "\" timeMs=\""
         << time.m_millisecond << '"';
}

std::string_view objectType(std::string_view agentType)
{
    if (agentType == "Zone") {
        return "STATIC_ZONE";
    }
    if (agentType == "Equipment") {
        return "STATIC_EQUIPMENT";
    }
    return agentType == "Wall" ? "STATIC_WALL" : "OBJECT";
}

void appendPhysicalObject(StreamText& text, const BoundAgent& agent)
{
    text << "      <ActivityPhysicalObject type=\"" << objectType(typeOf(agent)) << "\" ID=\""
         << identifierOf(agent) << "\" name=\"";
    appendEscaped(text, nameOf(agent));
    text << "\" dynamicObjectID=\"0\"/>\n";
}

void appendSubEvent(StreamText& text, const BoundAgent& agent)
{
    text << "      <SubActivity ID=\"" << identifierOf(agent) << "\" name=\"";
    appendEscaped(text, nameOf(agent));
    text << "\"/>\n";
}

void appendActivityStart(StreamText& text, const CSScenarioInstance& instance)
{
    const CSScenario& model = *instance.m_scenario;
    text << "   <Activity ID=\"" << instance.m_id << "\" name=\"";
    appendEscaped(text, model.m_name);
    text << "\" confidence=\"" << instance.m_confidence << "\" type=\"";
    appendEscaped(text, model.m_kind);
    text << "\" AType=\"";
    appendEscaped(text, model.m_alarmLevelName);
    text << "\" AText=\"\" status=\"\" hypothesisID=\"1\">\n";
}

bool isContinuation(std::string_view value, std::size_t position)
{
    return position < value.size() &&
           (static_cast<unsigned char>(value[position]) & 0xC0U) == 0x80U;
}

// How many bytes at the position make one character in UTF-8; 0 when they make none.
std::size_t encodedLength(std::string_view value, std::size_t position)
{
    const auto lead = static_cast<unsigned char>(value[position]);
    if (lead < 0x80U) {
        return 1;
    }
    const std::size_t length = lead >= 0xF0U ? 4 : lead >= 0xE0U ? 3 : 2;
    if (lead < 0xC2U || lead > 0xF4U) {
        return 0;
    }
    for (std::size_t offset = 1; offset < length; ++offset) {
        if (!isContinuation(value, position + offset)) {
            return 0;
        }
    }
    return length;
}

std::uint32_t decodedCharacter(std::string_view bytes)
{
    auto character = static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[0]));
    if (bytes.size() > 1) {
        character &= 0xFFU >> (bytes.size() + 1);
    }
    for (const char byte : bytes.substr(1)) {
        character = (character << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    return character;
}

// Characters of XML 1.0, in their shortest form.
bool isAllowed(std::uint32_t character, std::size_t length)
{
    if (character < 0x20U) {
        return character == '\t' || character == '\n' || character == '\r';
    }
    const bool isShortest = length < 3 || character >= (length == 3 ? 0x800U : 0x10000U);
    const bool isSurrogate = character >= 0xD800U && character <= 0xDFFFU;
    return isShortest && !isSurrogate && character != 0xFFFEU && character != 0xFFFFU &&
           character <= 0x10FFFFU;
}

std::string_view entityOf(char character)
{
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    default:
        return {};
    }
}

} // namespace

void appendEscaped(StreamText& text, std::string_view value)
{
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    std::size_t position = 0;
    while (position < value.size()) {
        if (const auto entity = entityOf(value[position]); !entity.empty()) {
            text << entity;
            ++position;
            continue;
        }
        const std::size_t length = encodedLength(value, position);
        if (length == 0) {
            text << kReplacement;
            ++position;
            continue;
        }
        const auto bytes = value.substr(position, length);
        text << (isAllowed(decodedCharacter(bytes), length) ? bytes : kReplacement);
        position += length;
    }
}

void appendFrameStart(StreamText& text, const CSTimeStamp& now)
{
    text << " <RHVideoFrame ";
    appendTimeFields(text, now);
    text << ">\n  <ListMobileObjects/>\n  <ListActivities>\n";
}

void appendActivity(StreamText& text, const CSScenarioInstance& instance)
{
    appendActivityStart(text, instance);
    text << "    <TimeStart ";
    appendTimeFields(text, *instance.m_start);
    text << " uncertainty=\"0\"/>\n    <TimeEnd ";
    appendTimeFields(text, *instance.m_end);
    text << " uncertainty=\"0\"/>\n     <ListActivityPhysicalObjects>\n";
    for (const auto& [variable, agent] : instance.m_bindings) {
        if (!isSubEvent(agent)) {
            appendPhysicalObject(text, agent);
        }
    }
    text << "     </ListActivityPhysicalObjects>\n     <ListSubActivities>\n";
    for (const auto& [variable, agent] : instance.m_bindings) {
        if (isSubEvent(agent)) {
            appendSubEvent(text, agent);
        }
    }
    text << "     </ListSubActivities>\n     <Properties/>\n     <ListActivityCameraCtrl/>\n"
            "   </Activity>\n";
}

void appendFrameEnd(StreamText& text)
{
    text << "  </ListActivities>\n </RHVideoFrame>\n";
}

} // namespace scenariomatch
