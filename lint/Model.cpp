#include "lint/Model.h"

#include <algorithm>

namespace scenariomatch::lint
{

bool isModelKind(std::string_view word)
{
    return std::find(kModelKinds.begin(), kModelKinds.end(), word) != kModelKinds.end();
}

bool isSection(std::string_view word)
{
    return std::find(kSections.begin(), kSections.end(), word) != kSections.end();
}

const Constant* Model::findConstant(std::string_view wanted) const
{
    const auto found =
        std::find_if(constants->rbegin(), constants->rend(), [&](const Constant& constant) {
            return constant.name.text == wanted;
        });
    return found == constants->rend() ? nullptr : &*found;
}

const Variable* Model::findObject(std::string_view variable) const
{
    const auto found = std::find_if(objects.rbegin(), objects.rend(), [&](const Variable& object) {
        return object.name.text == variable;
    });
    return found == objects.rend() ? nullptr : &*found;
}

const ModelComponent* Model::findComponent(std::string_view variable) const
{
    const auto found =
        std::find_if(components.begin(), components.end(), [&](const ModelComponent& component) {
            return component.variable.text == variable;
        });
    return found == components.end() ? nullptr : &*found;
}

} // namespace scenariomatch::lint
