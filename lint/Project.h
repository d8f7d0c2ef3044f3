#pragma once

#include "lint/Diagnostic.h"
#include "lint/Model.h"
#include "lint/ObjectTypes.h"
#include "lint/OperatorTable.h"

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch::lint
{

// A file and where its name is written; without a source where nothing names it.
struct NamedFile
{
    std::string path;
    Range named;
};

// An element of the scene's context, as the object that becomes of it.
struct SceneElement
{
    std::string type;
    std::string name;
    // "FILE:LINE".
    std::string place;
    // Its line in the context.
    Range range;
};

// What there is to check.
struct ProjectFiles
{
    std::optional<NamedFile> engine;
    std::optional<NamedFile> objectTypes;
    std::optional<NamedFile> operators;
    // Model files by themselves; there is no engine file then.
    std::vector<NamedFile> models;
    std::map<std::string, LoadedOperator> loaded;
    // Nothing when there is no context.
    std::optional<std::vector<SceneElement>> scene;
};

// All files read, with the places of all their words.
class Project
{
public:
    // A larger file is not checked; it is reported as one that cannot be read.
    static constexpr std::size_t kMaximumFileBytes = std::size_t{1} << 20U;

    // Reads the files; reports what is wrong with their shape, and files that cannot be read.
    Project(const ProjectFiles& files, Diagnostics& out);
    Project(const Project&) = delete;
    Project(Project&&) = delete;
    Project& operator=(const Project&) = delete;
    Project& operator=(Project&&) = delete;
    ~Project() = default;

    const std::vector<Model>& models() const { return m_models; }

    const ObjectTypes& types() const { return m_types; }

    const OperatorTable& operators() const { return m_operators; }

    const std::vector<Word>& usedModels() const { return m_usedModels; }

    const std::vector<Constant>& constants() const { return m_constants; }

    const std::optional<std::vector<SceneElement>>& scene() const { return m_scene; }

    // Whether an engine file was read, so that used models and constants are known.
    bool hasSettings() const { return m_hasSettings; }

    // Whether they were read without a fault: what is not found there is missing indeed.
    bool isUseKnown() const { return m_hasSettings && !m_isIncomplete && !m_hasSettingsFault; }

    // Whether constants are read after models, which has been reported.
    bool hasLateConstants() const { return m_hasLateConstants; }

    // Whether a file could not be read.
    bool isIncomplete() const { return m_isIncomplete; }

    // The first model of the name; null when there is none.
    const Model* findModel(std::string_view name) const;

private:
    const Source* open(const NamedFile& file, Diagnostics& out);
    void readEngine(const NamedFile& file, Diagnostics& out);
    void readSettings(const NamedFile& file, Diagnostics& out);
    void readConstants(const NamedFile& file, Diagnostics& out);
    void readModels(const NamedFile& file, Diagnostics& out);
    std::optional<NamedFile> include(const std::string& path, const Word& name, Diagnostics& out);

    std::deque<Source> m_sources;
    ObjectTypes m_types;
    OperatorTable m_operators;
    std::vector<Model> m_models;
    std::vector<Word> m_usedModels;
    // All of them, wherever they are known.
    std::vector<Constant> m_constants;
    // Those of the settings read so far.
    std::shared_ptr<const std::vector<Constant>> m_settings =
        std::make_shared<const std::vector<Constant>>();
    std::optional<std::vector<SceneElement>> m_scene;
    bool m_hasSettings = false;
    bool m_hasSettingsFault = false;
    bool m_hasLateConstants = false;
    bool m_isIncomplete = false;
};

} // namespace scenariomatch::lint
