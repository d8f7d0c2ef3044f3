#include "tests/app/report/DecodedReport.h"

#include "app/FrameClock.h"

#include <QByteArray>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string_view>
#include <zlib.h>

namespace scenariomatch
{

namespace
{

using nlohmann::json;

std::string inflated(QByteArray bytes)
{
    constexpr int kGzipWindow = 15 + 16;
    z_stream stream{};
    if (inflateInit2(&stream, kGzipWindow) != Z_OK) {
        throw std::runtime_error("zlib does not start");
    }
    stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    std::string text;
    std::array<char, 4096> buffer{};
    int state = Z_OK;
    while (state == Z_OK) {
        stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
        stream.avail_out = static_cast<uInt>(buffer.size());
        state = inflate(&stream, Z_NO_FLUSH);
        text.append(buffer.data(), buffer.size() - stream.avail_out);
    }
    inflateEnd(&stream);
    if (state != Z_STREAM_END) {
        throw std::runtime_error("the data is damaged");
    }
    return text;
}

const json& modelOf(const json& data, std::size_t event)
{
    return data["models"][data["events"]["model"][event].get<std::size_t>()];
}

// As recognition calls what the tracks call otherwise.
std::string agentType(const std::string& type)
{
    if (type == "PERSON") {
        return "Person";
    }
    return type == "GROUP" ? "Group" : "Mobile";
}

json trackedObject(const json& data, int id)
{
    for (const json& actor : data["actors"]) {
        if (actor["id"] == id) {
            const std::string type = data["types"][actor["type"].get<std::size_t>()];
            return {{"type", agentType(type)}, {"id", id}, {"name", ""}};
        }
    }
    throw std::runtime_error("there is no such actor");
}

json sceneObject(const json& data, int id)
{
    for (const json& object : data["scene"]["objects"]) {
        if (object["id"] == id) {
            return {{"type", object["type"]}, {"id", id}, {"name", object["name"]}};
        }
    }
    throw std::runtime_error("there is no such object");
}

// In the order of the variables, as events have them.
json objectsOf(const json& data, std::size_t event)
{
    const json& variables = modelOf(data, event)["objects"];
    const auto fixed = data["events"]["fixed"][event].get<std::uint64_t>();
    std::map<std::string, json> byVariable;
    for (std::size_t i = 0; i < variables.size(); ++i) {
        const int id = data["events"]["objects"][event][i];
        json object = (fixed >> i & 1U) == 1U ? sceneObject(data, id) : trackedObject(data, id);
        object["variable"] = variables[i]["name"];
        byVariable[variables[i]["name"]] = object;
    }
    json list = json::array();
    for (const auto& [variable, object] : byVariable) {
        list.push_back(object);
    }
    return list;
}

json subEventsOf(const json& data, std::size_t event)
{
    const json& variables = modelOf(data, event)["components"];
    std::map<std::string, json> byVariable;
    for (std::size_t i = 0; i < variables.size(); ++i) {
        const std::string variable = variables[i]["name"];
        byVariable[variable] = {
            {"variable", variable},
            {"id", data["events"]["subEventIds"][event][i]},
            {"name", variables[i]["modelName"]}};
    }
    json list = json::array();
    for (const auto& [variable, part] : byVariable) {
        list.push_back(part);
    }
    return list;
}

std::string clockAt(const json& data, const json& milliseconds)
{
    const auto start = parseClock(data["clock"]["start"].get<std::string>());
    return printClock(
        millisecondsToClock(clockToMilliseconds(*start) + milliseconds.get<std::int64_t>()));
}

} // namespace

std::string dataIn(const std::string& page, const std::string& id)
{
    const std::string opening = R"(<script type="text/plain" id=")" + id + "\">";
    const std::size_t place = page.find(opening);
    if (place == std::string::npos || page.find(opening, place + 1) != std::string::npos) {
        return {};
    }
    const std::size_t begin = place + opening.size();
    return page.substr(begin, page.find('<', begin) - begin);
}

DecodedReport decodeReport(const std::string& page)
{
    const auto part = [&page](const std::string& id) {
        const auto bytes = QByteArray::fromBase64Encoding(
            QByteArray::fromStdString(dataIn(page, id)), QByteArray::AbortOnBase64DecodingErrors);
        return json::parse(inflated(*bytes));
    };
    return {part("report-data"), part("report-tracks"), part("report-why")};
}

std::vector<json> eventLines(const json& data)
{
    std::vector<json> lines;
    const json& events = data["events"];
    for (std::size_t i = 0; i < events["id"].size(); ++i) {
        const json& model = modelOf(data, i);
        const std::size_t alarm = events["alarm"][i];
        const auto length =
            events["end"][i].get<std::int64_t>() - events["begin"][i].get<std::int64_t>();
        lines.push_back(
            {{"id", events["id"][i]},
             {"name", model["name"]},
             {"kind", data["kinds"][model["kind"].get<std::size_t>()]},
             {"alarm_level", data["alarms"][alarm]},
             {"alarm", data["alarmNumbers"][alarm]},
             {"text", data["texts"][events["text"][i].get<std::size_t>()]},
             {"confidence", events["confidence"][i].get<double>()},
             {"begin", clockAt(data, events["begin"][i])},
             {"begin_frame", events["beginFrame"][i]},
             {"end", clockAt(data, events["end"][i])},
             {"end_frame", events["endFrame"][i]},
             {"duration", static_cast<double>(length) / 1000},
             {"objects", objectsOf(data, i)},
             {"sub_events", subEventsOf(data, i)}});
    }
    return lines;
}

} // namespace scenariomatch
