#pragma once

#include "tests/reference/Duel.h"

#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

using Attributes = std::vector<std::pair<std::string, SceneValue>>;

// Many small models of one kind, which are matched together, and what their scenes are made of.
struct SmallFamily
{
    struct Model
    {
        std::string name;
        std::string declaration;
    };

    // The models that all others may be made of, then all of the kind.
    std::vector<Model> common;
    std::vector<Model> models;
    // Types of the actors, by host.
    std::vector<std::string> actors;
    // What an actor that is present may be like: its positions.
    std::vector<Attributes> places;
    std::vector<SceneObject> zones;
    Duel::Settings settings;

    ModelSet all() const;
    // The same with every `stride`-th model, beginning with the `first`.
    SmallFamily part(std::size_t first, std::size_t stride) const;
};

// Four positions: two of them in one place, others as far apart as a bound says.
std::vector<Attributes> plainPlaces();
// Four that are no positions, or have coordinates that are no numbers.
std::vector<Attributes> oddPlaces();

// Primitive states of two variables p and q, declared by `objects`: one for every list of up to
// `longest` constraints, out of seventeen of all flavours.
SmallFamily constraintLists(const std::string& objects, int longest);
// The same for one variable, out of eleven constraints.
SmallFamily singleLists(int longest);
// Composites of one and two components: every sub-model, argument and temporal relation.
SmallFamily pairs();
// Composites of three components: every sub-model and argument, ordered in time or not.
SmallFamily triples();
// Composites of composites, with confidences, thresholds and sub-models that have two parents.
SmallFamily chains();
// States of persons and zones and of the time before, one of them with an operator that changes its
// mind, and composites of them.
SmallFamily visits();

} // namespace scenariomatch
