#include "host/ovkLogger.h"
#include "plugin/ParameterFile.h"
#include "plugin/ScenarioMatchProcess.h"

#include <array>
#include <charconv>
#include <cmath>
#include <iostream>
#include <string_view>
#include <system_error>

using scenariomatch::ParameterFile;
using scenariomatch::StreamText;

namespace
{

void reportMissing(std::string_view key, std::string_view shown)
{
    std::cerr << "The parameter, " << key << ", is missing, default value is used: " << shown
              << '\n';
}

// The parameters' values as text, for getting and setting them by name; a text that is no value
// sets nothing.

std::string valueText(const std::string& value)
{
    return value;
}

std::string valueText(bool value)
{
    return value ? "true" : "false";
}

std::string valueText(int value)
{
    return std::to_string(value);
}

std::string valueText(unsigned value)
{
    return std::to_string(value);
}

std::string valueText(double value)
{
    std::array<char, 32> digits = {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), end.ptr};
}

bool setValue(std::string& value, const std::string& text)
{
    value = text;
    return true;
}

bool setValue(bool& value, const std::string& text)
{
    if (text != "true" && text != "false") {
        return false;
    }
    value = text == "true";
    return true;
}

template <typename Number>
bool setNumber(Number& value, const std::string& text)
{
    Number number = 0;
    const auto* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end) {
        return false;
    }
    value = number;
    return true;
}

bool setValue(int& value, const std::string& text)
{
    return setNumber(value, text);
}

bool setValue(unsigned& value, const std::string& text)
{
    return setNumber(value, text);
}

bool setValue(double& value, const std::string& text)
{
    double number = 0.0;
    if (!setNumber(number, text) || !std::isfinite(number)) {
        return false;
    }
    value = number;
    return true;
}

} // namespace

// A parameter's name, and how it is read from and written to a process.
struct ScenarioMatchProcess::NamedParameter
{
    std::string name;
    std::string (*get)(const ScenarioMatchProcess& process) = nullptr;
    bool (*set)(ScenarioMatchProcess& process, const std::string& text) = nullptr;

    template <auto Member>
    static NamedParameter of(std::string name)
    {
        return {
            std::move(name),
            [](const ScenarioMatchProcess& process) { return valueText(process.*Member); },
            [](ScenarioMatchProcess& process, const std::string& text) {
                return setValue(process.*Member, text);
            }};
    }
};

const std::vector<ScenarioMatchProcess::NamedParameter>& ScenarioMatchProcess::namedParameters()
{
    using Process = ScenarioMatchProcess;
    using Parameter = NamedParameter;
    static const std::vector<NamedParameter> parameters = {
        Parameter::of<&Process::m_debug>("debug"),
        Parameter::of<&Process::m_objectDescription>("scenarioRecognitionObjectDescription"),
        Parameter::of<&Process::m_operatorDescription>("scenarioRecognitionOperatorDescription"),
        Parameter::of<&Process::m_modelFileName>("scenarioRecognitionModelFileName"),
        Parameter::of<&Process::m_operatorPluginPath>("OperatorPluginPath"),
        Parameter::of<&Process::m_maximumScenarioLife>("scenarioRecognitionMaximumScenarioLife"),
        Parameter::of<&Process::m_constProlongation>("constProlongation"),
        Parameter::of<&Process::m_constTimeSearch>("constTimeSearch"),
        Parameter::of<&Process::m_historySize>("historySize"),
        Parameter::of<&Process::m_saveXML3File>("saveXML3File"),
        Parameter::of<&Process::m_saveXML1File>("saveXML1File"),
        Parameter::of<&Process::m_xml3AlarmLevel>("XML3AlarmLevel"),
        Parameter::of<&Process::m_xml3FileName>("XML3FileName"),
        Parameter::of<&Process::m_xml1FileName>("XML1FileName"),
        Parameter::of<&Process::m_personSittingMaxHeight>("PersonSittingMaxHeight"),
        Parameter::of<&Process::m_contextFileName>("RHMContext"),
        Parameter::of<&Process::m_eventsToNotify>("EventsToNotify"),
        Parameter::of<&Process::m_bayesianRatio>("BayesianRatio"),
        Parameter::of<&Process::m_confidencePrimitiveState>("ConfidencePrimitiveState"),
        Parameter::of<&Process::m_confidencePrimitiveEvent>("ConfidencePrimitiveEvent"),
        Parameter::of<&Process::m_confidenceCompositeState>("ConfidenceCompositeState"),
        Parameter::of<&Process::m_confidenceCompositeEvent>("ConfidenceCompositeEvent"),
        Parameter::of<&Process::m_maximumCandidates>("MaximumCandidates"),
    };
    return parameters;
}

std::vector<std::string> ScenarioMatchProcess::parameterNames() const
{
    std::vector<std::string> names;
    for (const auto& parameter : namedParameters()) {
        names.push_back(parameter.name);
    }
    return names;
}

std::optional<std::string> ScenarioMatchProcess::parameter(const std::string& name) const
{
    for (const auto& parameter : namedParameters()) {
        if (parameter.name == name) {
            return parameter.get(*this);
        }
    }
    return std::nullopt;
}

bool ScenarioMatchProcess::setParameter(const std::string& name, const std::string& value)
{
    for (const auto& parameter : namedParameters()) {
        if (parameter.name == name) {
            return parameter.set(*this, value);
        }
    }
    return false;
}

void ScenarioMatchProcess::readEngineParametersFromFile(const std::string& path)
{
    const ParameterFile file(path);
    if (!file.isOpen()) {
        if (!file.fault().empty()) {
            ovkLogger::instance()->log(ovkLogger::kErrorLevel, path + ": " + file.fault());
        }
        std::cout << "\nConfiguration file is not found. Assuming Default Values\n";
        return;
    }
    readFlag(file, "debug", m_debug);
    readText(
        file, "scenarioRecognitionObjectDescription", m_objectDescription, m_objectDescription);
    readText(
        file,
        "scenarioRecognitionOperatorDescription",
        m_operatorDescription,
        m_operatorDescription);
    readText(file, "scenarioRecognitionModelFileName", m_modelFileName, m_modelFileName);
    readText(file, "OperatorPluginPath", m_operatorPluginPath, m_operatorPluginPath);
    readWhole(file, "scenarioRecognitionMaximumScenarioLife", m_maximumScenarioLife);
    readWhole(file, "constProlongation", m_constProlongation);
    readWhole(file, "constTimeSearch", m_constTimeSearch);
    readWhole(file, "historySize", m_historySize);
    readFlag(file, "saveXML3File", m_saveXML3File);
    readFlag(file, "saveXML1File", m_saveXML1File);
    readText(file, "XML3AlarmLevel", m_xml3AlarmLevel, m_xml3AlarmLevel);
    // The messages of these two show the alarm level.
    readText(file, "XML3FileName", m_xml3FileName, m_xml3AlarmLevel);
    readText(file, "XML1FileName", m_xml1FileName, m_xml3AlarmLevel);
    readLastParameters(file);
}

void ScenarioMatchProcess::readLastParameters(const ParameterFile& file)
{
    const double height = file.real("PersonSittingMaxHeight");
    if (height > 0.0) {
        setParamPersonSittingMax3dHeight(height);
    } else {
        StreamText shown;
        shown << m_personSittingMaxHeight;
        reportMissing("PersonSittingMaxHeight", shown.text());
    }
    // Both messages name the first of the two keys.
    constexpr std::string_view kMissing =
        "The parameter, RHMContext, is missing, default value is used\n";
    if (std::string context = file.text("RHMContext"); !context.empty()) {
        setRhmContextFilename(std::move(context));
    } else {
        std::cerr << kMissing;
    }
    if (std::string events = file.text("EventsToNotify"); !events.empty()) {
        setParamEvensToNotify(std::move(events));
    } else {
        std::cerr << kMissing;
    }
}

void ScenarioMatchProcess::readText(
    const ParameterFile& file, const std::string& key, std::string& value, const std::string& shown)
{
    std::string text = file.text(key);
    if (text.empty()) {
        reportMissing(key, shown);
        return;
    }
    value = std::move(text);
}

void ScenarioMatchProcess::readFlag(const ParameterFile& file, const std::string& key, bool& value)
{
    const std::string text = file.text(key);
    if (text.empty()) {
        reportMissing(key, value ? "1" : "0");
        return;
    }
    value = text == "true";
}

void ScenarioMatchProcess::readWhole(const ParameterFile& file, const std::string& key, int& value)
{
    const int number = file.whole(key);
    if (number == 0) {
        reportMissing(key, std::to_string(value));
        return;
    }
    value = number;
}
