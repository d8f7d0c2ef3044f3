// Measures how well mistakes are found: the example models are changed in one place, at random with
// a fixed seed, and what the checker says is held against what was done.

#include "app/CheckInput.h"
#include "app/InstalledFiles.h"
#include "lint/Checks.h"
#include "lint/NearNames.h"
#include "types/TextFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

const std::string kExamples = SCENARIOMATCH_TEST_DATA "/../../examples";
constexpr unsigned kSeed = 20261121;
constexpr std::size_t kPerFileAndKind = 60;

// A change of one place of a text.
struct Mutant
{
    std::string kind;
    std::string text;
    // Where in the changed text the mistake is.
    std::size_t begin = 0;
    std::size_t end = 0;
    // The word that was misspelt; empty for other mistakes.
    std::string original;
};

// A piece of a text.
struct Piece
{
    std::size_t begin;
    std::size_t end;
};

std::string textOf(const std::string& text, Piece piece)
{
    return text.substr(piece.begin, piece.end - piece.begin);
}

bool isLetter(char letter)
{
    return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_';
}

std::vector<Piece> wordsOf(const std::string& text)
{
    std::vector<Piece> words;
    for (std::size_t i = text.find('{'); i < text.size(); ++i) {
        const std::size_t begin = i;
        while (i < text.size() && isLetter(text[i])) {
            ++i;
        }
        if (i != begin) {
            words.push_back({begin, i});
        }
    }
    return words;
}

std::vector<std::size_t> placesOf(const std::string& text, std::string_view wanted)
{
    std::vector<std::size_t> places;
    for (std::size_t i = text.find(wanted); i != std::string::npos; i = text.find(wanted, i + 1)) {
        places.push_back(i);
    }
    return places;
}

std::string replaced(const std::string& text, Piece piece, const std::string& by)
{
    return text.substr(0, piece.begin) + by + text.substr(piece.end);
}

// Whether the place lies in the text of an alarm.
bool isInAlarmText(const std::string& text, std::size_t place)
{
    const std::size_t open = text.rfind('(', place);
    return open != std::string::npos && text.compare(open, 5, "(Text") == 0;
}

// All mistakes of one kind in a text, made with the help of a source of chance.
using Random = std::mt19937;
using Mutator = std::function<std::vector<Mutant>(const std::string&, Random&)>;

// Any place from which a dropped parenthesis could be put back with the same result is right.
Mutant droppedParenthesis(const std::string& text, std::size_t place)
{
    const char letter = text[place];
    Mutant mutant{"dropped parenthesis", replaced(text, {place, place + 1}, ""), place, place, ""};
    const auto isSame = [&](char other) {
        return other == letter || other == ' ' || other == '\n';
    };
    while (mutant.begin > 0 && isSame(mutant.text[mutant.begin - 1])) {
        --mutant.begin;
    }
    while (mutant.end < mutant.text.size() && isSame(mutant.text[mutant.end])) {
        ++mutant.end;
    }
    return mutant;
}

std::vector<Mutant> dropParentheses(const std::string& text, Random&)
{
    std::vector<Mutant> mutants;
    for (const std::size_t place : placesOf(text, "(")) {
        mutants.push_back(droppedParenthesis(text, place));
    }
    for (const std::size_t place : placesOf(text, ")")) {
        mutants.push_back(droppedParenthesis(text, place));
    }
    return mutants;
}

std::string misspelt(std::string word, Random& random)
{
    const std::size_t place = random() % word.size();
    switch (random() % 4) {
    case 0:
        word.insert(place, 1, word[place]);
        break;
    case 1:
        word.erase(place, 1);
        break;
    case 2:
        word[place] = static_cast<char>('a' + random() % 26);
        break;
    default:
        std::swap(word[place], word[(place + 1) % word.size()]);
    }
    return word;
}

// Words that name something elsewhere: not the names of models and variables where they are
// declared, no free text, no numbers.
std::vector<Mutant> misspell(const std::string& text, Random& random)
{
    std::set<std::string> known;
    for (const Piece word : wordsOf(text)) {
        known.insert(textOf(text, word));
    }
    std::vector<Mutant> mutants;
    for (const Piece word : wordsOf(text)) {
        const std::string before =
            text.substr(word.begin - std::min<std::size_t>(word.begin, 2), 2);
        const bool isDeclared = text.compare(word.end, 2, " :") == 0 || text[word.end] == ',';
        const bool isModelName = isDeclared && before == " (";
        const bool isVariable = isDeclared && text.compare(word.end, 2, " :") == 0 &&
                                std::isupper(static_cast<unsigned char>(text[word.begin])) == 0;
        const bool isNumber = std::isdigit(static_cast<unsigned char>(text[word.begin])) != 0;
        const std::size_t header = text.find(',');
        if (isModelName || isVariable || isNumber || word.begin < header ||
            word.end - word.begin < 4 || isInAlarmText(text, word.begin)) {
            continue;
        }
        const std::string original = textOf(text, word);
        const std::string other = misspelt(original, random);
        if (!known.contains(other) && !other.empty() && isLetter(other.front())) {
            mutants.push_back(
                {"misspelt word",
                 replaced(text, word, other),
                 word.begin,
                 word.begin + other.size(),
                 original});
        }
    }
    return mutants;
}

// "(p, z)" to "(z, p)" and "p inside z" to "z inside p", where the two are of different types.
std::vector<Mutant> swapArguments(const std::string& text, Random&)
{
    const std::vector<std::pair<std::string, std::string>> swaps = {
        {"(p, z)", "(z, p)"},
        {"(p, s)", "(s, p)"},
        {"(p, b)", "(b, p)"},
        {"(q, b)", "(b, q)"},
        {"p inside z", "z inside p"},
        {"p outside z", "z outside p"},
        {"p crossedRight g", "g crossedRight p"},
        {"p crossedLeft g", "g crossedLeft p"},
        {"p->Position in s->Vertices", "s->Vertices in p->Position"},
        {"(p->Position, b->Position, BagReach)", "(p->Position, BagReach, b->Position)"},
        {"(b->Position, BagLookBack, BagRadius)", "(BagLookBack, b->Position, BagRadius)"},
        {"speed(p->Position, MeetingLookBack)", "speed(MeetingLookBack, p->Position)"}};
    std::vector<Mutant> mutants;
    for (const auto& [from, to] : swaps) {
        for (const std::size_t place : placesOf(text, from)) {
            const Piece piece = {place, place + from.size()};
            mutants.push_back(
                {"swapped argument", replaced(text, piece, to), place, place + to.size(), ""});
        }
    }
    return mutants;
}

// An attribute of another type.
std::vector<Mutant> changeTypes(const std::string& text, Random&)
{
    const std::vector<std::pair<std::string, std::string>> changes = {
        {"p->Position,", "p->ID,"},
        {"q->Position,", "q->Type,"},
        {"q->Position)", "q->Width)"},
        {"z->Vertices", "z->Name"},
        {"s->Vertices", "s->Height"},
        {"value(p->Width) *", "value(p->Position) *"},
        {"p->ID <", "p->Type <"}};
    std::vector<Mutant> mutants;
    for (const auto& [from, to] : changes) {
        for (const std::size_t place : placesOf(text, from)) {
            const Piece piece = {place, place + from.size()};
            mutants.push_back(
                {"wrong type", replaced(text, piece, to), place, place + to.size(), ""});
        }
    }
    return mutants;
}

// Where a section that begins at a place ends.
std::size_t endOfSection(const std::string& text, std::size_t begin)
{
    std::size_t depth = 0;
    std::size_t i = begin;
    do {
        depth += text[i] == '(' ? 1U : 0U;
        depth -= text[i] == ')' ? 1U : 0U;
        ++i;
    } while (depth != 0 || text[i - 1] != ')');
    return i;
}

// Without its objects or components a model's name is where the mistake is.
std::vector<Mutant> dropSections(const std::string& text, Random&)
{
    std::vector<Mutant> mutants;
    for (const char* section : {"PhysicalObjects(", "Components("}) {
        for (const std::size_t place : placesOf(text, section)) {
            const std::size_t comma = text.rfind(",\n", place);
            const std::size_t open = text.rfind('(', comma);
            mutants.push_back(
                {"missing section",
                 replaced(text, {place, endOfSection(text, place)}, ""),
                 open + 1,
                 comma,
                 ""});
        }
    }
    return mutants;
}

// Every place of one text made another one; the mistake is at a part of what is new.
Mutator replaceAll(
    std::string kind,
    std::string from,
    std::string to,
    std::size_t begin,
    std::size_t end,
    std::string original = "")
{
    return [=](const std::string& text, Random&) {
        std::vector<Mutant> mutants;
        for (const std::size_t place : placesOf(text, from)) {
            mutants.push_back(
                {kind,
                 replaced(text, {place, place + from.size()}, to),
                 place + begin,
                 place + end,
                 original});
        }
        return mutants;
    };
}

std::vector<Mutator> allMutators()
{
    return {
        dropParentheses,
        misspell,
        misspell,
        misspell,
        swapArguments,
        changeTypes,
        dropSections,
        replaceAll("missing comma", ",\n    PhysicalObjects", "\n    PhysicalObjects", 0, 0),
        replaceAll("blank before )", "Time))", "Time ))", 4, 5),
        replaceAll("no blank", "->ID < ", "->ID< ", 0, 6),
        replaceAll("no blank", "->Name = ", "->Name= ", 0, 8),
        replaceAll("no blank", "->Name != ", "->Name !=", 0, 9),
        replaceAll("blank before (", "distance(", "distance (", 0, 9),
        replaceAll("missing argument", ", BagReach)", ")", 0, 0),
        replaceAll("missing argument", "Zone(p, z)", "Zone(p)", 0, 4),
        replaceAll("remark", "\nPrimitiveState (", "\n# A remark.\nPrimitiveState (", 1, 12),
        replaceAll("threshold", ",\n    PhysicalObjects", "[1.5],\n    PhysicalObjects", 0, 5)};
}

// One example in a folder of its own, whose model files can be changed.
class Example
{
public:
    Example(const std::string& name, const std::string& parameters)
        : m_folder(
              std::filesystem::temp_directory_path() /
              fmt::format("lint-mutants-{}-{}", name, getpid()))
    {
        std::filesystem::remove_all(m_folder);
        std::filesystem::copy(
            kExamples + "/" + name, m_folder, std::filesystem::copy_options::recursive);
        RunParameterSources sources;
        sources.file = (m_folder / parameters).string();
        sources.operatorFolder = installedOperatorFolder().string();
        sources.operatorDescription = installedVocabulary().string();
        std::string error;
        const auto file = readStorageFile(sources.file, error);
        lint::Diagnostics ignored;
        readCheckParameters(
            sources.file, *file, *mergeParameters(*file, sources, error), "", m_input, ignored);
    }

    Example(const Example&) = delete;
    Example(Example&&) = delete;
    Example& operator=(const Example&) = delete;
    Example& operator=(Example&&) = delete;

    ~Example() { std::filesystem::remove_all(m_folder); }

    std::string path(const std::string& file) const { return (m_folder / file).string(); }

    // Calls visit with what is found.
    void check(const std::function<void(const std::vector<lint::Diagnostic>&)>& visit) const
    {
        lint::Diagnostics found;
        const lint::Project project(m_input.files, found);
        lint::checkProject(project, found);
        visit(found.all());
    }

private:
    std::filesystem::path m_folder;
    CheckInput m_input;
};

struct Score
{
    std::size_t mutants = 0;
    std::size_t found = 0;
    std::size_t line = 0;
    std::size_t token = 0;
    std::size_t single = 0;
    std::size_t misspelt = 0;
    std::size_t suggested = 0;
};

bool isError(const lint::Diagnostic& diagnostic)
{
    return diagnostic.rule->severity == lint::Severity::Error;
}

// A misspelt kind of a component is a warning, because the engine does not look at it.
const lint::Diagnostic* firstOf(const std::vector<lint::Diagnostic>& found, const std::string& file)
{
    const auto matches = [&](const lint::Diagnostic& diagnostic) {
        const bool counts = isError(diagnostic) || diagnostic.rule->name == "component-kind";
        return counts && diagnostic.range.source->name() == file;
    };
    const auto first = std::find_if(found.begin(), found.end(), matches);
    return first == found.end() ? nullptr : &*first;
}

std::size_t lineOf(const std::string& text, std::size_t place)
{
    return 1 + static_cast<std::size_t>(std::count(
                   text.begin(), text.begin() + static_cast<std::ptrdiff_t>(place), '\n'));
}

void judge(
    const Mutant& mutant,
    const std::vector<lint::Diagnostic>& found,
    const std::string& file,
    Score& score)
{
    const lint::Diagnostic* first = firstOf(found, file);
    ++score.mutants;
    score.misspelt += mutant.original.empty() ? 0U : 1U;
    std::string verdict = "not found";
    if (first != nullptr) {
        const std::size_t line = first->range.place().line;
        const bool isLine =
            line >= lineOf(mutant.text, mutant.begin) && line <= lineOf(mutant.text, mutant.end);
        const bool isToken = first->range.begin <= mutant.end && first->range.end >= mutant.begin;
        ++score.found;
        score.line += isLine ? 1U : 0U;
        score.token += isToken ? 1U : 0U;
        score.single += std::count_if(found.begin(), found.end(), isError) <= 1 ? 1U : 0U;
        const bool isSuggested = !mutant.original.empty() && first->suggestion == mutant.original;
        score.suggested += isSuggested ? 1U : 0U;
        verdict = !isLine ? "another line" : !isToken ? "another token" : "";
        if (verdict.empty() && std::count_if(found.begin(), found.end(), isError) > 1) {
            verdict = fmt::format("several ({})", found[1].message);
        }
        if (verdict.empty() && !mutant.original.empty() && !isSuggested) {
            verdict = "no suggestion";
        }
    }
    if (verdict.empty()) {
        return;
    }
    const std::size_t begin = mutant.text.rfind('\n', mutant.end - 1) + 1;
    std::cout << fmt::format(
        "{}: {}: {}: {}: {}\n",
        verdict,
        mutant.kind,
        mutant.original,
        mutant.text.substr(begin, mutant.text.find('\n', mutant.end) - begin),
        first == nullptr ? ""
                         : fmt::format(
                               "{}:{}:{} {}",
                               first->rule->name,
                               first->range.place().line,
                               first->range.place().column,
                               first->message));
}

void measure(const Example& example, const std::string& file, Random& random, Score& score)
{
    const std::string path = example.path(file);
    const std::string text = *readTextFile(path);
    std::set<std::string> made;
    for (const Mutator& mutate : allMutators()) {
        std::vector<Mutant> mutants = mutate(text, random);
        for (std::size_t i = 0; i < kPerFileAndKind && !mutants.empty(); ++i) {
            const auto place = static_cast<std::ptrdiff_t>(random() % mutants.size());
            const Mutant mutant = mutants[static_cast<std::size_t>(place)];
            mutants.erase(mutants.begin() + place);
            if (!made.insert(mutant.text).second) {
                continue;
            }
            std::ofstream(path, std::ios::binary) << mutant.text;
            example.check([&](const std::vector<lint::Diagnostic>& found) {
                judge(mutant, found, path, score);
            });
        }
    }
    std::ofstream(path, std::ios::binary) << text;
}

double share(std::size_t part, std::size_t whole)
{
    return whole == 0 ? 0.0 : 100.0 * static_cast<double>(part) / static_cast<double>(whole);
}

// As a table for docs/diagnostics.md.
std::string figuresOf(const Score& score)
{
    return fmt::format(
        "| mistakes made | {} |\n"
        "| found | {} |\n"
        "| in the right line | {:.1f} % |\n"
        "| at the right word | {:.1f} % |\n"
        "| with one error only | {:.1f} % |\n"
        "| misspelt words | {} |\n"
        "| with the right suggestion | {:.1f} % |\n",
        score.mutants,
        score.found,
        share(score.line, score.mutants),
        share(score.token, score.mutants),
        share(score.single, score.mutants),
        score.misspelt,
        share(score.suggested, score.misspelt));
}

TEST(Mutations, AreFoundAtTheirPlace)
{
    Random random(kSeed); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same mistakes every time
    Score score;
    const Example lobby("lobby", "lobby.yaml");
    for (const char* file : {"models/zones.txt", "models/people.txt", "models/bags.txt"}) {
        measure(lobby, file, random, score);
    }
    measure(Example("gate", "gate.yaml"), "crossings.txt", random, score);
    const std::string figures = figuresOf(score);
    std::cout << figures;
    const auto document = readTextFile(SCENARIOMATCH_TEST_DATA "/../../docs/diagnostics.md");
    EXPECT_NE(document->find(figures), std::string::npos) << "These stand in docs/diagnostics.md.";
    EXPECT_GE(score.mutants, 300U);
    EXPECT_EQ(score.line, score.mutants);
    EXPECT_GE(share(score.token, score.mutants), 95.0);
    EXPECT_GE(share(score.suggested, score.misspelt), 80.0);
}

TEST(Examples, AreFoundWithoutErrors)
{
    using Names = std::pair<std::string, std::string>;
    for (const Names& names : {Names("lobby", "lobby.yaml"), Names("gate", "gate.yaml")}) {
        Example(names.first, names.second).check([&](const std::vector<lint::Diagnostic>& found) {
            EXPECT_TRUE(found.empty()) << names.first << ": " << found.front().message;
        });
    }
}

} // namespace

} // namespace scenariomatch
