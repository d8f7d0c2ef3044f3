#include "app/RecognitionSetup.h"

#include "app/ExitStatus.h"
#include "app/InstalledFiles.h"
#include "app/OperatorsCommand.h"
#include "app/RecognitionPlugin.h"
#include "app/RunCheck.h"
#include "app/StreamRedirection.h"
#include "app/TemporaryFile.h"
#include "host/rhmDataContext.h"
#include "plugin/RecognitionView.h"
#include "types/TextFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fmt/format.h>
#include <iostream>
#include <system_error>
#include <utility>

namespace scenariomatch
{

namespace
{

// The parameters that name files which must be there.
constexpr std::array<const char*, 4> kNeededFiles{
    "scenarioRecognitionModelFileName",
    "scenarioRecognitionObjectDescription",
    "scenarioRecognitionOperatorDescription",
    "RHMContext"};

constexpr const char* kAlarmLevel = "XML3AlarmLevel";

} // namespace

RecognitionSetup::RecognitionSetup(std::ostream& talk, std::string settingsPlace)
    : m_talk(talk)
    , m_settingsPlace(std::move(settingsPlace))
{
}

RunParameterSources
RecognitionSetup::sourcesFor(const std::string& parameterFile, unsigned maximumCandidates)
{
    RunParameterSources sources;
    sources.file = parameterFile;
    sources.settings.emplace_back("MaximumCandidates", std::to_string(maximumCandidates));
    sources.operatorFolder = installedOperatorFolder().string();
    sources.operatorDescription = installedVocabulary().string();
    return sources;
}

// Keeps the first fault; always false.
bool RecognitionSetup::fail(int status, const std::string& reason)
{
    if (!m_fault) {
        m_fault = {status, reason};
    }
    return false;
}

bool RecognitionSetup::read(RunParameterSources sources)
{
    m_sources = std::move(sources);
    std::string error;
    std::optional<StorageFile> file = readStorageFile(m_sources.file, error);
    if (!file) {
        return fail(kExitModel, error);
    }
    m_file = *std::move(file);
    std::optional<RunParameters> parameters = mergeParameters(m_file, m_sources, error);
    if (!parameters) {
        return fail(kExitUsage, "--set: " + error);
    }
    m_parameters = *std::move(parameters);
    return checkFiles();
}

// A missing file would only be told of in the traces, or not at all.
bool RecognitionSetup::checkFiles()
{
    for (const char* key : kNeededFiles) {
        const std::string name = textOf(key);
        const std::string fault = name.empty() ? "" : textFileFault(name);
        if (!fault.empty()) {
            return fail(kExitModel, fmt::format("{} ({}): {}", name, key, fault));
        }
    }
    if (textOf("scenarioRecognitionModelFileName").empty()) {
        return fail(kExitModel, m_sources.file + ": scenarioRecognitionModelFileName is missing");
    }
    return checkOperators() && checkContext();
}

bool RecognitionSetup::checkOperators()
{
    std::error_code error;
    const std::string folder = textOf("OperatorPluginPath");
    if (!std::filesystem::is_directory(folder, error)) {
        return fail(kExitPlugin, folder + " (OperatorPluginPath): there is no such folder");
    }
    const OperatorFolder found = inspectOperatorFolder(folder);
    const std::string hint = fmt::format("`scenariomatch operators --path {}` says why", folder);
    if (!found.hasPlugin && found.skipped.empty()) {
        return fail(kExitPlugin, "no operators in " + folder + " (OperatorPluginPath)");
    }
    if (!found.hasPlugin) {
        const SkippedModule& first = found.skipped.front();
        return fail(
            kExitPlugin,
            fmt::format(
                "no operators in {} (OperatorPluginPath); {}: {}; {}",
                folder,
                first.file,
                first.reason,
                hint));
    }
    if (!found.skipped.empty()) {
        m_operatorWarning = fmt::format(
            "{} (OperatorPluginPath): warning: files skipped: {}; {}\n",
            folder,
            found.skipped.size(),
            hint);
    }
    return true;
}

// The process would go on without a context that cannot be read.
bool RecognitionSetup::checkContext()
{
    const std::string name = textOf("RHMContext");
    if (name.empty()) {
        return true;
    }
    rhmDataContext context;
    const bool isRead = context.read(QString::fromStdString(name));
    for (const ContextError& error : context.errors()) {
        m_contextErrors.insert(error.text());
    }
    if (isRead) {
        return true;
    }
    return fail(
        kExitModel,
        context.errors().empty() ? name + ": no context" : context.errors().back().text());
}

// What the process takes in its own way without a word, and what no file is to be blamed for.
void RecognitionSetup::warnOfSettings()
{
    const std::string warning = alarmLevelWarning(textOf(kAlarmLevel));
    if (!warning.empty() && m_sources.hasSetting(kAlarmLevel)) {
        m_talk << m_settingsPlace << ": warning: " << warning << '\n';
    }
}

void RecognitionSetup::warn()
{
    m_talk << m_operatorWarning;
    warnOfSettings();
    StorageFile inForce = m_file;
    std::erase_if(inForce.entries, [this](const StorageEntry& entry) {
        return m_sources.hasSetting(entry.key);
    });
    m_isChecked = writeErrors(m_sources.file, inForce, m_parameters, m_talk);
}

std::unique_ptr<rhmAbstractProcessEventRecognition> RecognitionSetup::createProcess()
{
    std::string error;
    std::unique_ptr<rhmAbstractProcessEventRecognition> process =
        createRecognitionProcess(installedPluginPath(), error);
    if (!process) {
        fail(kExitPlugin, error);
        return nullptr;
    }
    if (!applySetters(*process) || !initProcess(*process) || !checkModels(*process)) {
        return nullptr;
    }
    return process;
}

bool RecognitionSetup::applySetters(rhmAbstractProcessEventRecognition& process)
{
    for (const NamedText& setter : m_parameters.setters) {
        const auto& [key, value] = setter;
        if (process.setParameter(key, value)) {
            continue;
        }
        const bool isKnown = process.parameter(key).has_value();
        const std::string reason = isKnown ? fmt::format("{} cannot be \"{}\"", key, value)
                                           : fmt::format("there is no parameter \"{}\"", key);
        if (m_sources.hasSetting(key)) {
            return fail(kExitUsage, "--set: " + reason);
        }
        if (!m_isChecked) {
            m_talk << m_sources.file << ':' << m_file.lineOf(key) << ": error: " << reason << '\n';
        }
    }
    return true;
}

// That default values stand for parameters which the user has not given is what he asked for.
bool RecognitionSetup::isToldBefore(std::string_view line) const
{
    constexpr std::string_view kBegin = "The parameter, ";
    constexpr std::string_view kEnd = ", is missing, default value is used";
    const std::size_t end = line.find(kEnd);
    if (!line.starts_with(kBegin) || end == std::string_view::npos) {
        return m_isChecked && m_contextErrors.contains(line);
    }
    const std::string key(line.substr(kBegin.size(), end - kBegin.size()));
    const bool isSet = std::any_of(
        m_parameters.setters.begin(), m_parameters.setters.end(), [&](const NamedText& setter) {
            return setter.first == key;
        });
    // The context's message stands for another parameter as well.
    return key == "RHMContext" || isSet || !m_parameters.value(key);
}

bool RecognitionSetup::initProcess(rhmAbstractProcessEventRecognition& process)
{
    const TemporaryFile file("scenariomatch-", ".yml", m_parameters.text);
    if (!file.isGood()) {
        return fail(kExitOutput, file.path() + ": the parameters cannot be written");
    }
    process.setParameterFile(file.path());
    std::ostream trace(std::cout.rdbuf());
    LineFilter filter(
        [this](std::string_view line) { return isToldBefore(line); }, *std::cerr.rdbuf(), trace);
    const StreamRedirection redirection(std::cerr, &filter);
    if (!process.init()) {
        return fail(kExitModel, m_sources.file + ": the process cannot be initialised");
    }
    return true;
}

bool RecognitionSetup::checkModels(const rhmAbstractProcessEventRecognition& process)
{
    const auto* const view = dynamic_cast<const RecognitionView*>(&process);
    if (view != nullptr && view->counters().models == 0) {
        return fail(kExitModel, m_sources.file + ": no model takes part in recognition");
    }
    return true;
}

std::string RecognitionSetup::textOf(const std::string& key) const
{
    return m_parameters.value(key).value_or("");
}

std::vector<RunFile> RecognitionSetup::neededFiles() const
{
    std::vector<RunFile> files;
    files.reserve(kNeededFiles.size());
    for (const char* key : kNeededFiles) {
        files.push_back({key, textOf(key)});
    }
    return files;
}

} // namespace scenariomatch
