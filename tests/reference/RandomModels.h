#pragma once

#include "tests/reference/Duel.h"
#include "tests/reference/Random.h"

#include <string>
#include <vector>

namespace scenariomatch
{

// Makes up model sets: primitive states of one to three variables whose constraints mix operators
// of all flavours, some of them alike, composites of one to three components that may share
// sub-models and arguments, now and then something odd (two models of one name, an argument too
// few, a variable declared twice, a model that is not used).
class RandomModels
{
public:
    explicit RandomModels(Random& random);

    const ModelSet& models() const { return m_set; }

    // The most components, and the most variables of a primitive state, that a model has.
    int components() const { return m_components; }

    int variables() const { return m_variables; }

private:
    struct Model
    {
        std::string name;
        std::string kind;
        int variables;
    };

    struct Primitive
    {
        int variables;
        std::string objects;
        std::string constraints;
    };

    std::string newName();
    void addAlike(const Primitive& primitive);
    void addPrimitive();
    void addComposite();
    void addModel(const Model& model, const std::string& sections);
    std::string physicalObjects(int variables, const std::vector<std::string>& types);
    std::string component(int index, int variables);
    std::string compositeConstraint(int components, int variables);
    std::string threshold();

    // Constraints over the first variables.
    std::string constraint(int variables);
    std::string newConstraint(int variables);
    std::string call(int variables);
    std::string relation(int variables);
    std::string comparison(int variables);
    std::string oddity(int variables);
    std::string negated(int variables);
    std::string distance(int variables);
    std::string numberTerm(int variables);
    std::string numberOf(const std::string& variable);
    std::string positionTerm(int variables);
    std::string positionOf(const std::string& variable);
    std::string twoPositions(int variables);
    // A variable that is most often not the one that the term begins with.
    std::string other(const std::string& term, int variables);
    std::string boundTerm(int variables);
    std::string numberCall(int variables);
    std::string variable(int variables);
    // The operator in one of the flavours that it has and that this set uses.
    std::string op(const std::string& name, const std::string& flavours = "iep");

    Random& m_random;
    std::string m_flavours;
    std::vector<Model> m_models;
    std::vector<Primitive> m_primitives;
    std::vector<std::string> m_names;
    // What constraints were made of one and two variables, to be used again.
    std::vector<std::vector<std::string>> m_made;
    ModelSet m_set;
    int m_components = 1;
    int m_variables = 1;
};

} // namespace scenariomatch
