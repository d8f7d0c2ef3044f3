#include "app/OperatorsCommand.h"

#include "app/ExitStatus.h"
#include "app/InstalledFiles.h"
#include "app/OptionChecks.h"
#include "engine/OperatorFile.h"

#include <QDir>

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

// Loads one module; throws a runtime_error with the reason when it is no operator.
OperatorModule loadModule(const QDir& folder, const QString& file)
{
    const OperatorFile loaded = loadOperator(folder.absoluteFilePath(file).toStdString());
    if (loaded.op == nullptr) {
        throw std::runtime_error(loaded.reason);
    }
    OperatorModule module;
    module.file = file.toStdString();
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
    Json list{{"operators", Json::array()}, {"skipped", Json::array()}};
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
    out << list.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace

OperatorModules loadOperatorModules(const std::string& path)
{
    OperatorModules found;
    const QDir folder(QString::fromStdString(path));
    for (const QString& file : folder.entryList(QDir::Files, QDir::Name)) {
        try {
            found.modules.push_back(loadModule(folder, file));
        } catch (const std::exception& error) {
            found.skipped.push_back({file.toStdString(), error.what()});
        } catch (...) {
            found.skipped.push_back({file.toStdString(), "it threw something unknown"});
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

bool hasPluginFile(const std::string& path)
{
    const QDir folder(QString::fromStdString(path));
    const QStringList files = folder.entryList(QDir::Files, QDir::Name);
    return std::any_of(files.begin(), files.end(), [&folder](const QString& file) {
        return operatorRefusal(folder.absoluteFilePath(file).toStdString()).empty();
    });
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
    command->footer("Examples:\n"
                    "  scenariomatch operators\n"
                    "  scenariomatch operators --format json");
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
