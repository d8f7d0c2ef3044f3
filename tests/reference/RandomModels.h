#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace scenariomatch
{

// Makes up model sets, each the same for the same seed on every machine: primitive states of one
// and two variables, composites of one to three components that may share sub-models and arguments,
// now and then something odd (two models of one name, an argument too few, a model that is not
// used).
class RandomModels
{
public:
    explicit RandomModels(std::uint32_t seed);

    // The declarations of a model file.
    const std::string& text() const { return m_text; }

    const std::vector<std::string>& used() const { return m_used; }

    // The most components that a model has.
    int width() const { return m_width; }

    // A number below `limit`.
    int pick(int limit);
    bool oneIn(int times);

private:
    struct Model
    {
        std::string name;
        std::string kind;
        int variables;
    };

    std::string newName();
    void addPrimitive();
    void addComposite();
    void addModel(const Model& model, const std::string& sections);
    std::string primitiveConstraint(int variables);
    std::string compositeConstraint(int components);
    std::string component(int index, int variables);
    std::string threshold();

    std::mt19937 m_random;
    std::vector<Model> m_models;
    std::vector<std::string> m_names;
    std::string m_text;
    std::vector<std::string> m_used;
    int m_width = 1;
};

} // namespace scenariomatch
