#pragma once

#include "plugin/RecognitionView.h"
#include "scenario/CSScenario.h"

#include <map>
#include <string>
#include <vector>

namespace scenariomatch
{

// The models that take part in recognition, by name.
class ModelSet
{
public:
    ModelSet() = default;
    explicit ModelSet(const RecognitionView& view);

    // The first of the name; null where there is none.
    const CSScenario* find(const std::string& name) const;
    std::vector<std::string> names() const;

    struct Part
    {
        const CSScenario* model = nullptr;
        std::size_t hidden = 0;
    };

    // The model itself comes first. `hidden` counts the objects of the whole model that its part
    // is not told of; the greatest number where it is used more than once.
    std::vector<Part> partsOf(const CSScenario& model) const;

private:
    std::map<std::string, const CSScenario*> m_models;
};

} // namespace scenariomatch
