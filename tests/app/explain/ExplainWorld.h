#pragma once

#include "app/explain/Evidence.h"
#include "app/explain/WhyNotObserver.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace scenariomatch
{

// The standard operators, by name; loaded once.
const CConstraint::OperatorTable& standardOperators();

// A rectangle of the scene.
struct WorldZone
{
    std::string name;
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;

    // By as much on all sides; what would be less than nothing is as good as nothing.
    void grow(double by);
};

// One constraint: text before its limit, the limit, and text after it. A limit that is a word is in
// the text.
struct WorldConstraint
{
    std::string before;
    std::optional<double> limit;
    std::string after;

    std::string text() const;
};

struct WorldModel
{
    std::string kind = "PrimitiveState";
    std::string name;
    std::optional<double> threshold;
    // As in a model file: "(p : Person)".
    std::string objects;
    std::string components;
    std::vector<WorldConstraint> constraints;

    std::string text() const;
};

// A small scene with models: what explanations are tried on. People have numbers from 1, frames
// come every 40 milliseconds.
struct World
{
    static constexpr double kFrameSeconds = 0.04;

    std::vector<WorldModel> models;
    std::vector<WorldZone> zones;
    // By person, the place in each frame in which the person is seen.
    std::map<int, std::map<int, std::pair<double, double>>> tracks;
    int frames = 0;
    double bayesianRatio = 1.0;
    double prolongation = 1.0;
    double lookBack = 60.0;
    // Beside the standard ones.
    std::vector<CSOperatorInterfaceAbstract*> operators = {};

    WorldModel& model(const std::string& name);
    WorldZone& zone(const std::string& name);
    // The person does everything by so many frames later.
    void delay(int person, int by);
    std::string text() const;
};

// A recognition: the model, "p=1 q=2", and the frame.
struct WorldRecognition
{
    std::string model;
    std::string objects;
    int frame = 0;

    friend bool operator==(const WorldRecognition&, const WorldRecognition&) = default;

    friend bool operator<(const WorldRecognition& one, const WorldRecognition& other)
    {
        return std::tie(one.model, one.objects, one.frame) <
               std::tie(other.model, other.objects, other.frame);
    }
};

// What came out of a world.
struct WorldRun
{
    std::set<WorldRecognition> recognitions;
    // The recognised events.
    std::vector<int> events;
    std::optional<WhyNot> why;
    std::shared_ptr<const Evidence> evidence;

    bool has(const std::string& model, const std::string& objects) const;
};

// Recognises what happens in the world; asks why a model did not match, or why an event was
// recognised.
//
// An engine is made for each run. The question's look back is the world's.
WorldRun
runWorld(const World& world, const std::optional<WhyNotQuestion>& whyNot, std::optional<int> why);

} // namespace scenariomatch
