#include "bench/ModelVariants.h"

#include "bench/CrowdRecognition.h"

#include <fmt/format.h>
#include <fstream>
#include <sstream>

namespace scenariomatch
{

namespace
{

// How the zones, the distances and the times of a variant differ from those of others.
struct Variant
{
    int number;
    std::string a;
    std::string b;
    double distance;
    double seconds;
};

constexpr int kZonePairs = 5;

void addState(MadeModels& made, const std::string& name, const std::string& rest)
{
    made.text += fmt::format("PrimitiveState ({},\n{}\n)\n", name, rest);
    made.names.push_back(name);
}

void addComposite(MadeModels& made, const std::string& name, const std::string& rest)
{
    made.text += fmt::format("CompositeEvent ({},\n{}\n)\n", name, rest);
    made.names.push_back(name);
}

void addNearLong(MadeModels& made, const Variant& variant)
{
    const std::string pair = fmt::format("near_pair_{}", variant.number);
    addState(
        made,
        pair,
        fmt::format(
            "PhysicalObjects((p : Person)(q : Person))\n"
            "Constraints((distance(p, q) < {}))",
            variant.distance));
    addComposite(
        made,
        fmt::format("near_long_{}", variant.number),
        fmt::format(
            "PhysicalObjects((p : Person)(q : Person))\n"
            "Components((c : PrimitiveState {}(p, q)))\n"
            "Constraints((duration(c) >= {}))",
            pair,
            variant.seconds + 1));
}

void addNearInZone(MadeModels& made, const Variant& variant)
{
    addState(
        made,
        fmt::format("near_in_A_{}", variant.number),
        fmt::format(
            "PhysicalObjects((p : Person)(q : Person)(z : Zone))\n"
            "Constraints((z->Name = {})(p inside z)(q inside z)(distance(p, q) < {}))",
            variant.a,
            variant.distance - 0.5));
}

// Who comes into the zone or goes out of it, by the operator that says so.
std::string addPassage(
    MadeModels& made, const std::string& name, const std::string& crossed, const std::string& zone)
{
    addState(
        made,
        name,
        fmt::format(
            "PhysicalObjects((p : Person)(z : Zone))\n"
            "Constraints((z->Name = {})(p {} z))",
            zone,
            crossed));
    return name;
}

void addFollow(MadeModels& made, const Variant& variant)
{
    const std::string enters =
        addPassage(made, fmt::format("enters_A_{}", variant.number), "crossedLeft", variant.a);
    addComposite(
        made,
        fmt::format("follow_{}", variant.number),
        fmt::format(
            "PhysicalObjects((p : Person)(q : Person)(z : Zone))\n"
            "Components((c1 : PrimitiveState {0}(p, z))(c2 : PrimitiveState {0}(q, z)))\n"
            "Constraints((c1 before c2)(gap(c1, c2) <= {1}))",
            enters,
            variant.seconds));
}

void addAToB(MadeModels& made, const Variant& variant)
{
    const std::string leaves =
        addPassage(made, fmt::format("leaves_A_{}", variant.number), "crossedRight", variant.a);
    const std::string enters =
        addPassage(made, fmt::format("enters_B_{}", variant.number), "crossedLeft", variant.b);
    addComposite(
        made,
        fmt::format("A_to_B_{}", variant.number),
        fmt::format(
            "PhysicalObjects((p : Person)(a : Zone)(b : Zone))\n"
            "Components((c1 : PrimitiveState {}(p, a))(c2 : PrimitiveState {}(p, b)))\n"
            "Constraints((c1 before c2)(gap(c1, c2) <= {}))",
            leaves,
            enters,
            variant.seconds * 30));
}

} // namespace

MadeModels variedQuestions(const Crowd& crowd, int variants)
{
    MadeModels made;
    for (int i = 0; i < kZonePairs; ++i) {
        const double shift = 0.02 * i;
        made.zones.push_back(crowd.strip(fmt::format("A{}", i), 0.06 + shift, 0.21 + shift));
        made.zones.push_back(crowd.strip(fmt::format("B{}", i), 0.71 + shift, 0.86 + shift));
    }
    for (int i = 0; i < variants; ++i) {
        const int pair = i % kZonePairs;
        const int step = i / kZonePairs % kZonePairs;
        const Variant variant{
            i,
            fmt::format("A{}", pair),
            fmt::format("B{}", pair),
            1.8 + 0.1 * ((pair + step) % kZonePairs),
            1.5 + 0.25 * step};
        addNearLong(made, variant);
        addNearInZone(made, variant);
        addFollow(made, variant);
        addAToB(made, variant);
    }
    return made;
}

MadeModels closePeople(const Crowd& crowd, int people)
{
    std::string objects;
    std::string constraints;
    for (int i = 0; i < people; ++i) {
        objects += fmt::format("(p{} : Person)", i);
        for (int j = 0; j < i; ++j) {
            constraints += fmt::format("(distance(p{}, p{}) < 2)", j, i);
        }
    }
    if (people == 1) {
        constraints = "(p0->ID >= 0)";
    }
    MadeModels made;
    made.zones = {crowd.zoneA(), crowd.zoneB()};
    addState(
        made,
        "close_people",
        fmt::format("PhysicalObjects({})\nConstraints({})", objects, constraints));
    return made;
}

MadeModels levelChain(const Crowd& crowd, int levels)
{
    MadeModels made;
    made.zones = {crowd.zoneA()};
    addState(made, "level_0", "PhysicalObjects((p : Person))\nConstraints((p->ID >= 0))");
    for (int level = 1; level < levels; ++level) {
        addComposite(
            made,
            fmt::format("level_{}", level),
            fmt::format(
                "PhysicalObjects((p : Person))\n"
                "Components((c : {} level_{}(p)))",
                level == 1 ? "PrimitiveState" : "CompositeEvent",
                level - 1));
    }
    return made;
}

void addSeenModels(MadeModels& made, int models, int firstId, int objectsEach)
{
    for (int i = 0; i < models; ++i) {
        const int first = firstId + i * objectsEach;
        addState(
            made,
            fmt::format("seen_{}", i),
            fmt::format(
                "PhysicalObjects((b : Mobile))\n"
                "Constraints((b->ID >= {})(b->ID < {}))",
                first,
                first + objectsEach));
    }
}

MadeModels fourQuestions(const Crowd& crowd)
{
    const std::ifstream file(crowdFile("models.txt"), std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    const std::string text = content.str();
    const std::string header = "Scenarios {\nCrowd,\n";
    const std::size_t begin = text.find(header) + header.size();
    MadeModels made;
    made.text = text.substr(begin, text.rfind('}') - begin);
    made.names = {
        "near_pair",
        "near_long",
        "near_in_A",
        "enters_A",
        "leaves_A",
        "enters_B",
        "follow",
        "A_to_B"};
    made.zones = {crowd.zoneA(), crowd.zoneB()};
    return made;
}

std::string writeModels(const MadeModels& made, const TemporaryFolder& folder)
{
    folder.write("models.txt", "Scenarios {\nMade,\n" + made.text + "}\n");
    std::string settings = "Engine {\nMade,\n";
    for (const std::string& name : made.names) {
        settings += fmt::format("UsedModels({})\n", name);
    }
    folder.write("settings.txt", settings + "}\n");
    return folder.write(
        "engine.txt",
        "List {\nMade,\nincludeEngine(settings.txt)\nincludeScenario(models.txt)\n}\n");
}

} // namespace scenariomatch
