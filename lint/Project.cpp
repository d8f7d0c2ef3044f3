#include "lint/Project.h"

#include "lint/ModelFile.h"
#include "lint/SettingsFiles.h"
#include "types/TextFile.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace scenariomatch::lint
{

Project::Project(const ProjectFiles& files, Diagnostics& out)
    : m_scene(files.scene)
{
    for (const auto& [name, op] : files.loaded) {
        m_operators.addLoaded(name, op);
    }
    if (files.operators) {
        if (const Source* source = open(*files.operators, out)) {
            m_operators.read(*source, out);
        }
    }
    if (files.objectTypes) {
        if (const Source* source = open(*files.objectTypes, out)) {
            m_types.read(*source, out);
        }
    }
    if (files.engine) {
        readEngine(*files.engine, out);
    }
    for (const NamedFile& file : files.models) {
        readModels(file, out);
    }
}

const Model* Project::findModel(std::string_view name) const
{
    const auto found = std::find_if(m_models.begin(), m_models.end(), [&](const Model& model) {
        return model.name.text == name;
    });
    return found == m_models.end() ? nullptr : &*found;
}

const Source* Project::open(const NamedFile& file, Diagnostics& out)
{
    auto text = readTextFile(file.path);
    if (text && text->size() <= kMaximumFileBytes) {
        return &m_sources.emplace_back(file.path, *std::move(text));
    }
    m_isIncomplete = true;
    const Range place = file.named.source == nullptr
                            ? Range{&m_sources.emplace_back(file.path, ""), 0, 0}
                            : file.named;
    out.add(
        "unreadable-file",
        place,
        text ? fmt::format("{} is not checked: it is larger than 1 MiB", file.path)
             : fmt::format("{} cannot be read: {}", file.path, textFileFault(file.path)));
    return nullptr;
}

// The file that an entry of another one names; nothing after a report.
std::optional<NamedFile>
Project::include(const std::string& path, const Word& name, Diagnostics& out)
{
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    if (name.text.starts_with('/')) {
        out.add(
            "absolute-file-name",
            name.range,
            fmt::format("file names are relative: this is {}{}", folder, name.text),
            "name the file as seen from the folder of this one");
        m_isIncomplete = true;
        return std::nullopt;
    }
    return NamedFile{folder + name.text, name.range};
}

void Project::readEngine(const NamedFile& file, Diagnostics& out)
{
    const Source* source = open(file, out);
    if (source == nullptr) {
        return;
    }
    m_hasSettings = true;
    bool hasModels = false;
    const std::size_t reported = out.all().size();
    const std::vector<SettingsEntry> entries = readEngineFile(*source, out);
    m_hasSettingsFault = m_hasSettingsFault || out.all().size() != reported;
    for (const SettingsEntry& entry : entries) {
        const bool isModels = entry.keyword.text == "includeScenario";
        if (!isModels && entry.keyword.text != "includeEngine") {
            continue;
        }
        const std::optional<NamedFile> included = include(file.path, entry.argument, out);
        const std::size_t known = m_settings->size();
        if (included && isModels) {
            hasModels = true;
            readModels(*included, out);
        } else if (included) {
            readSettings(*included, out);
        }
        if (hasModels && m_settings->size() != known) {
            m_hasLateConstants = true;
            out.add(
                "settings-after-models",
                spanOf(entry.keyword.range, entry.argument.range),
                "the models above do not know the constants of these settings",
                "include settings before models");
        }
    }
}

void Project::readSettings(const NamedFile& file, Diagnostics& out)
{
    const Source* source = open(file, out);
    if (source == nullptr) {
        return;
    }
    const std::size_t reported = out.all().size();
    const std::vector<SettingsEntry> entries = readSettingsFile(*source, out);
    m_hasSettingsFault = m_hasSettingsFault || out.all().size() != reported;
    for (const SettingsEntry& entry : entries) {
        if (entry.keyword.text == "EnvVars") {
            if (const auto included = include(file.path, entry.argument, out)) {
                readConstants(*included, out);
            }
        } else if (entry.keyword.text == "UsedModels") {
            const std::vector<Word> items = itemsOf(entry.argument);
            m_usedModels.insert(m_usedModels.end(), items.begin(), items.end());
        } else if (entry.keyword.text == "InterestedObjects") {
            out.add(
                "no-effect", entry.keyword.range, "InterestedObjects has no effect in the plug-in");
        }
    }
}

void Project::readConstants(const NamedFile& file, Diagnostics& out)
{
    const Source* source = open(file, out);
    if (source == nullptr) {
        return;
    }
    auto constants = std::make_shared<std::vector<Constant>>(*m_settings);
    for (Constant& constant : readConstantsFile(*source, out)) {
        m_constants.push_back(constant);
        constants->push_back(std::move(constant));
    }
    m_settings = std::move(constants);
}

void Project::readModels(const NamedFile& file, Diagnostics& out)
{
    const Source* source = open(file, out);
    if (source == nullptr) {
        return;
    }
    ModelFile read = readModelFile(*source, m_settings, m_operators.names(), out);
    for (Model& model : read.models) {
        m_models.push_back(std::move(model));
    }
    const auto own = read.constants->begin() + static_cast<std::ptrdiff_t>(m_settings->size());
    m_constants.insert(m_constants.end(), own, read.constants->end());
}

} // namespace scenariomatch::lint
