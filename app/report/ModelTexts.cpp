#include "app/report/ModelTexts.h"

#include "app/CheckInput.h"
#include "lint/Model.h"
#include "lint/Project.h"

#include <algorithm>
#include <cstddef>

namespace scenariomatch
{

namespace
{

// From the kind to the parenthesis that closes the declaration; empty where there is none.
std::string declarationAt(const lint::Range& kind)
{
    if (kind.source == nullptr) {
        return {};
    }
    const std::string& text = kind.source->text();
    int depth = 0;
    for (std::size_t i = kind.begin; i < text.size(); ++i) {
        depth += text[i] == '(' ? 1 : 0;
        depth -= text[i] == ')' ? 1 : 0;
        if (text[i] == ')' && depth <= 0) {
            return text.substr(kind.begin, i + 1 - kind.begin);
        }
    }
    return {};
}

} // namespace

std::map<std::string, std::string> readModelTexts(
    const std::string& parameterFile, const StorageFile& file, const RunParameters& parameters)
{
    CheckInput input;
    lint::Diagnostics found;
    readCheckParameters(parameterFile, file, parameters, "", input, found);
    const lint::Project project(input.files, found);
    std::map<std::string, std::string> texts;
    for (const lint::Model& model : project.models()) {
        texts.try_emplace(model.name.text, declarationAt(model.kind.range));
    }
    return texts;
}

} // namespace scenariomatch
