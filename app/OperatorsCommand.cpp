#include "app/OperatorsCommand.h"

#include "app/ExitStatus.h"
#include "app/HelpFooter.h"
#include "app/InstalledFiles.h"
#include "app/OptionChecks.h"
#include "engine/OperatorFile.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <ostream>
#include <stdexcept>
#include <system_error>
#include <tuple>

namespace scenariomatch
{

namespace
{

// Everything in a folder but its folders: what is no sound file, such as a link to nowhere, too.
QFileInfoList entriesOf(const std::string& path)
{
    const QDir folder(QString::fromStdString(path));
    return folder.entryInfoList(QDir::Files | QDir::System | QDir::Hidden, QDir::Name);
}

// Why recognition passes over an entry before it looks into it; empty when it does not.
std::string entryFault(const QFileInfo& entry)
{
    if (!entry.isFile()) {
        return "it is no file";
    }
    return entry.isHidden() ? "it is hidden" : "";
}

// Loads one module; throws a runtime_error with the reason when it is no operator.
OperatorModule loadModule(const QFileInfo& entry)
{
    const std::string fault = entryFault(entry);
    if (!fault.empty()) {
        throw std::runtime_error(fault);
    }
    const OperatorFile loaded = loadOperator(entry.absoluteFilePath().toStdString());
    if (loaded.op == nullptr) {
        throw std::runtime_error(loaded.reason);
    }
    OperatorModule module;
    module.file = entry.fileName().toStdString();
    module.name = loaded.op->m_name;
    module.isTemporal = loaded.op->m_isTemporal;
    module.description = loaded.op->describe();
    return module;
}

// "INT|DOUBLE", in brackets where the argument may be left out.
std::string argumentText(const CSOperatorDescription& description, std::size_t position)
{
    std::string text;
    for (const std::string& type : description.m_arguments[position]) {
        text += text.empty() ? "" : "|";
        text += type;
    }
    text = text.empty() ? "any" : text;
    return position < description.m_requiredArguments ? text : "[" + text + "]";
}

std::string argumentsText(const CSOperatorDescription& description)
{
    std::string text;
    for (std::size_t i = 0; i < description.m_arguments.size(); ++i) {
        text += text.empty() ? "" : " ";
        text += argumentText(description, i);
    }
    return text.empty() ? "-" : text;
}

std::string temporalText(const OperatorModule& module)
{
    if (!module.isTemporal) {
        return "no";
    }
    const std::optional<std::size_t>& endsFirst = module.description.m_endsFirst;
    return endsFirst ? fmt::format("argument {} ends first", *endsFirst + 1) : "yes";
}

using Row = std::array<std::string, 6>;

Row rowOf(const OperatorModule& module)
{
    const CSOperatorDescription& description = module.description;
    return {
        module.name,
        argumentsText(description),
        description.m_result.empty() ? "-" : description.m_result,
        description.m_pure ? "yes" : "no",
        temporalText(module),
        description.m_summary.empty() ? "-" : description.m_summary};
}

void printText(const OperatorModules& modules, std::ostream& out)
{
    std::vector<Row> rows{{"name", "arguments", "result", "pure", "temporal", "summary"}};
    std::transform(modules.modules.begin(), modules.modules.end(), std::back_inserter(rows), rowOf);
    std::array<std::size_t, std::tuple_size_v<Row>> widths{};
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths.at(column) = std::max(widths.at(column), row.at(column).size());
        }
    }
    for (const Row& row : rows) {
        for (std::size_t column = 0; column + 1 < row.size(); ++column) {
            out << fmt::format("{:<{}}  ", row.at(column), widths.at(column));
        }
        out << row.back() << '\n';
    }
}

void printSkipped(const OperatorModules& modules, std::ostream& talk)
{
    for (const SkippedModule& skipped : modules.skipped) {
        talk << "scenariomatch operators: " << skipped.file << " was skipped: " << skipped.reason
             << '\n';
    }
    for (std::size_t i = 1; i < modules.modules.size(); ++i) {
        const OperatorModule& first = modules.modules[i - 1];
        const OperatorModule& second = modules.modules[i];
        if (first.name == second.name) {
            talk << "scenariomatch operators: " << first.file << " and " << second.file
                 << " are both named " << first.name << "; only one of them is used\n";
        }
    }
}

void printJson(const OperatorModules& modules, std::ostream& out)
{
    using Json = nlohmann::ordered_json;
    Json list{
        {"operators", Json::array()}, {"skipped", Json::array()}, {"duplicates", Json::array()}};
    for (const OperatorModule& module : modules.modules) {
        const CSOperatorDescription& description = module.description;
        const auto& endsFirst = description.m_endsFirst;
        list["operators"].push_back(
            {{"name", module.name},
             {"file", module.file},
             {"summary", description.m_summary},
             {"arguments", description.m_arguments},
             {"required_arguments", description.m_requiredArguments},
             {"result", description.m_result},
             {"pure", description.m_pure},
             {"temporal", module.isTemporal},
             {"ends_first", endsFirst ? Json(*endsFirst) : Json()}});
    }
    for (const SkippedModule& skipped : modules.skipped) {
        list["skipped"].push_back({{"file", skipped.file}, {"reason", skipped.reason}});
    }
    for (std::size_t i = 1; i < modules.modules.size(); ++i) {
        const OperatorModule& first = modules.modules[i - 1];
        const OperatorModule& second = modules.modules[i];
        if (first.name == second.name) {
            list["duplicates"].push_back(
                {{"name", first.name}, {"files", {first.file, second.file}}});
        }
    }
    out << list.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace

OperatorModules loadOperatorModules(const std::string& path)
{
    OperatorModules found;
    for (const QFileInfo& entry : entriesOf(path)) {
        const std::string file = entry.fileName().toStdString();
        try {
            found.modules.push_back(loadModule(entry));
        } catch (const std::exception& error) {
            found.skipped.push_back({file, error.what()});
        } catch (...) {
            found.skipped.push_back({file, "it threw something unknown"});
        }
    }
    std::stable_sort(
        found.modules.begin(),
        found.modules.end(),
        [](const OperatorModule& a, const OperatorModule& b) {
            return std::tie(a.name, a.file) < std::tie(b.name, b.file);
        });
    return found;
}

OperatorFolder inspectOperatorFolder(const std::string& path)
{
    OperatorFolder found;
    for (const QFileInfo& entry : entriesOf(path)) {
        std::string fault = entryFault(entry);
        if (fault.empty()) {
            fault = operatorRefusal(entry.absoluteFilePath().toStdString());
        }
        if (fault.empty()) {
            found.hasPlugin = true;
        } else {
            found.skipped.push_back({entry.fileName().toStdString(), fault});
        }
    }
    return found;
}

CLI::App* addOperatorsCommand(CLI::App& program, OperatorsOptions& options)
{
    CLI::App* const command = program.add_subcommand("operators", "List operators");
    command
        ->add_option(
            "--path", options.path, "Folder of operator modules; default: the installed ones")
        ->type_name("FOLDER");
    const Choices<OperatorsFormat> formats{
        {"text", OperatorsFormat::Text}, {"json", OperatorsFormat::Json}};
    addChoice(*command, "--format", options.format, formats, "Format of the list (default: text)");
    command->footer(footerText(
        {.description =
             "Loads every operator of a folder and prints what it says of itself: its arguments, "
             "its result, whether it is pure and whether it is temporal. Each file that "
             "recognition would skip is named on standard error with the reason.",
         .examples = {"scenariomatch operators", "scenariomatch operators --format json"}}));
    return command;
}

int runOperators(const OperatorsOptions& options, std::ostream& out, std::ostream& talk)
{
    const std::string path =
        options.path.empty() ? installedOperatorFolder().string() : options.path;
    std::error_code error;
    if (!std::filesystem::is_directory(path, error)) {
        talk << "scenariomatch operators: no operators in " << path
             << ": there is no such folder\n";
        return kExitPlugin;
    }
    const OperatorModules modules = loadOperatorModules(path);
    if (modules.modules.empty()) {
        talk << "scenariomatch operators: no operators in " << path << '\n';
    }
    if (options.format == OperatorsFormat::Json) {
        printJson(modules, out);
    } else {
        printText(modules, out);
        printSkipped(modules, talk);
    }
    out.flush();
    if (!out.good()) {
        talk << "scenariomatch operators: cannot write the list\n";
        return kExitOutput;
    }
    return modules.modules.empty() ? kExitPlugin : kExitDone;
}

} // namespace scenariomatch
