#pragma once

#include "lint/Diagnostic.h"
#include "lint/Model.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace scenariomatch::lint
{

// What a model file declares, in its order.
struct ModelFile
{
    std::vector<Model> models;
    // All known at the end of the file: those given and the file's own.
    std::shared_ptr<const std::vector<Constant>> constants;
};

// Reports a value that is no number.
void checkConstantValue(const Constant& constant, Diagnostics& out);

// Reads a model file and reports what is wrong with the shape of its declarations. A declaration
// whose parentheses do not balance is ended by the next line that begins one, so that the others
// are read all the same.
ModelFile readModelFile(
    const Source& source,
    std::shared_ptr<const std::vector<Constant>> constants,
    const std::set<std::string>& operators,
    Diagnostics& out);

} // namespace scenariomatch::lint
