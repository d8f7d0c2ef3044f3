#include "app/CheckInput.h"

#include "app/OperatorsCommand.h"
#include "host/rhmDataContext.h"
#include "lint/NearNames.h"
#include "types/TextFile.h"

#include <QXmlStreamReader>

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace scenariomatch
{

namespace
{

constexpr const char* kOperatorFolder = "OperatorPluginPath";

// Where the value of a key stands in the parameter file; the key where it is written otherwise, and
// nowhere when the file does not have it.
lint::Range rangeOf(const lint::Source& source, const StorageFile& file, const std::string& key)
{
    const std::size_t line = file.lineOf(key);
    if (line == 0) {
        return {};
    }
    const auto entry = std::find_if(
        file.entries.begin(), file.entries.end(), [&](const auto& e) { return e.key == key; });
    const std::string_view text = source.lineText(line);
    const std::size_t start = source.lineStart(line);
    const std::size_t afterKey = std::min(text.find(key) + key.size(), text.size());
    std::size_t begin = text.find(entry->text, afterKey);
    std::size_t length = entry->text.size();
    if (begin == std::string_view::npos || length == 0) {
        begin = std::min(text.find(key), text.size());
        length = std::min(key.size(), text.size() - begin);
    }
    return {&source, start + begin, start + begin + length};
}

lint::Range keyRange(const lint::Source& source, const StorageEntry& entry)
{
    const std::string_view text = source.lineText(entry.line);
    const std::size_t begin =
        source.lineStart(entry.line) + std::min(text.find(entry.key), text.size());
    return {&source, begin, std::min(begin + entry.key.size(), source.text().size())};
}

void checkKeys(const lint::Source& source, const StorageFile& file, lint::Diagnostics& out)
{
    const std::vector<std::string> known = knownParameters();
    for (const StorageEntry& entry : file.entries) {
        if (std::find(known.begin(), known.end(), entry.key) != known.end()) {
            continue;
        }
        const std::string near = lint::nearestName(entry.key, known);
        out.add(
               "unknown-keyword",
               keyRange(source, entry),
               fmt::format("there is no parameter '{}'", entry.key),
               lint::didYouMean(near))
            .suggestion = near;
    }
}

void checkAlarmLevel(const std::string& level, const lint::Range& range, lint::Diagnostics& out)
{
    if (alarmLevelWarning(level).empty() || range.source == nullptr) {
        return;
    }
    const std::vector<std::string> levels = {"NOTURGENT", "URGENT", "VERYURGENT", "SUPERURGENT"};
    const std::string near = lint::nearestName(level, levels);
    out.add(
           "unknown-alarm-level",
           range,
           fmt::format("'{}' is no alarm level, and counts as NOTURGENT", level),
           lint::didYouMean(near))
        .suggestion = near;
}

std::string typeOf(const QString& kind, const QString& shape)
{
    const bool isPolygon = shape == QLatin1String("polygon");
    if (kind == QLatin1String("zone") && isPolygon) {
        return "Zone";
    }
    if (kind == QLatin1String("wall") && isPolygon) {
        return "Wall";
    }
    const bool isObject = kind == QLatin1String("object");
    return isObject && (isPolygon || shape == QLatin1String("circle")) ? "Equipment" : "Camera";
}

// Without the blanks before it.
lint::Range trimmed(lint::Range range)
{
    const std::string& text = range.source->text();
    while (range.begin < range.end && (text[range.begin] == ' ' || text[range.begin] == '\t')) {
        ++range.begin;
    }
    return range;
}

// The elements with their lines; a context that is not well-formed gives those before the fault.
std::vector<lint::SceneElement> elementsOf(const lint::Source& source)
{
    const std::string file = std::filesystem::path(source.name()).filename().string();
    std::vector<lint::SceneElement> elements;
    QXmlStreamReader xml(QByteArray::fromStdString(source.text()));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement ||
            xml.name() != QLatin1String("Element")) {
            continue;
        }
        const QXmlStreamAttributes attributes = xml.attributes();
        const auto text = [&](const char* name) {
            return attributes.value(QLatin1String(name)).toString();
        };
        const auto line = static_cast<std::size_t>(std::max<qint64>(xml.lineNumber(), 1));
        const std::size_t begin = source.lineStart(line);
        elements.push_back(
            {typeOf(text("kind"), text("shape")),
             text("name").toStdString(),
             fmt::format("{}:{}", file, line),
             trimmed({&source, begin, begin + source.lineText(line).size()})});
    }
    return elements;
}

std::optional<lint::NamedFile> namedFile(
    const lint::Source& source,
    const StorageFile& file,
    const RunParameters& parameters,
    const std::string& key)
{
    const std::string path = parameters.value(key).value_or("");
    return path.empty() ? std::nullopt
                        : std::optional(lint::NamedFile{path, rangeOf(source, file, key)});
}

void checkOperatorFolder(
    const std::string& folder, const lint::Range& range, CheckInput& input, lint::Diagnostics& out)
{
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error)) {
        input.isIncomplete = true;
        out.add("unreadable-file", range, fmt::format("there is no folder {}", folder));
        return;
    }
    readCheckOperators(folder, input);
}

} // namespace

void readCheckOperators(const std::string& folder, CheckInput& input)
{
    for (OperatorModule& module : loadOperatorModules(folder).modules) {
        input.files.loaded[module.name] = {std::move(module.description), module.isTemporal};
    }
}

void readCheckContext(const lint::NamedFile& file, CheckInput& input, lint::Diagnostics& out)
{
    auto text = readTextFile(file.path);
    const lint::Source& source = input.sources.emplace_back(file.path, text.value_or(""));
    const lint::Range none = {&source, 0, 0};
    if (!text) {
        input.isIncomplete = true;
        out.add(
            "unreadable-file",
            file.named.source == nullptr ? none : file.named,
            fmt::format("{} cannot be read: {}", file.path, textFileFault(file.path)));
        return;
    }
    rhmDataContext context;
    const bool isRead = context.read(QString::fromStdString(file.path));
    for (const ContextError& error : context.errors()) {
        const auto line = static_cast<std::size_t>(std::max<qint64>(error.line, 1));
        const std::size_t begin = std::min(
            source.lineStart(line) + static_cast<std::size_t>(std::max<qint64>(error.column, 1)) -
                1,
            source.text().size());
        out.add(isRead ? "malformed" : "unreadable-file", {&source, begin, begin}, error.reason);
    }
    input.isIncomplete = input.isIncomplete || !isRead;
    if (isRead) {
        input.files.scene = elementsOf(source);
    }
}

void readCheckParameters(
    const std::string& parameterFile,
    const StorageFile& file,
    const RunParameters& parameters,
    const std::string& context,
    CheckInput& input,
    lint::Diagnostics& out)
{
    const lint::Source& source =
        input.sources.emplace_back(parameterFile, readTextFile(parameterFile).value_or(""));
    const auto named = [&](const char* key) { return namedFile(source, file, parameters, key); };
    checkKeys(source, file, out);
    const char* const level = "XML3AlarmLevel";
    checkAlarmLevel(parameters.value(level).value_or(""), rangeOf(source, file, level), out);
    input.files.engine = named("scenarioRecognitionModelFileName");
    input.files.objectTypes = named("scenarioRecognitionObjectDescription");
    input.files.operators = named("scenarioRecognitionOperatorDescription");
    if (!input.files.engine) {
        input.isIncomplete = true;
        out.add("unreadable-file", {&source, 0, 0}, "scenarioRecognitionModelFileName is missing");
    }
    const auto scene = context.empty() ? named("RHMContext") : lint::NamedFile{context, {}};
    if (scene) {
        readCheckContext(*scene, input, out);
    }
    const std::string folder = parameters.value(kOperatorFolder).value_or("");
    lint::Range range = rangeOf(source, file, kOperatorFolder);
    range = range.source == nullptr ? lint::Range{&source, 0, 0} : range;
    checkOperatorFolder(folder, range, input, out);
}

} // namespace scenariomatch
