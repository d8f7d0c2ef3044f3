// Parents of object types.

#include "lint/Checks.h"
#include "lint/NearNames.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>
#include <string>
#include <vector>

namespace scenariomatch::lint
{

namespace
{

const ObjectType* parentOf(const ObjectTypes& types, const ObjectType& type)
{
    const auto found =
        std::find_if(types.all().begin(), types.all().end(), [&](const ObjectType& other) {
            return other.name.text == type.parent.text;
        });
    return found == types.all().end() ? nullptr : &*found;
}

void checkParent(const ObjectTypes& types, const ObjectType& type, Diagnostics& out)
{
    if (type.parent.range.source == nullptr || type.parent.text == "Agent" ||
        parentOf(types, type) != nullptr) {
        return;
    }
    const std::string near = nearestName(type.parent.text, types.names());
    out.add(
           "unknown-parent",
           type.parent.range,
           fmt::format("'{}', the parent of {}, is not declared", type.parent.text, type.name.text),
           didYouMean(near))
        .suggestion = near;
}

// A circle is told of at the first of its types.
void checkCircles(const ObjectTypes& types, Diagnostics& out)
{
    std::set<const ObjectType*> done;
    for (const ObjectType& start : types.all()) {
        std::vector<const ObjectType*> line;
        const ObjectType* type = &start;
        while (type != nullptr && !done.contains(type)) {
            done.insert(type);
            line.push_back(type);
            type = parentOf(types, *type);
        }
        const auto entry = std::find(line.begin(), line.end(), type);
        if (entry != line.end()) {
            // All types lie in one list, so the first in the file has the least place.
            const ObjectType* first = *std::min_element(entry, line.end());
            out.add(
                "parent-circle",
                first->parent.range,
                fmt::format("{} derives from itself", first->name.text));
        }
    }
}

} // namespace

void checkObjectTypes(const ObjectTypes& types, Diagnostics& out)
{
    for (const ObjectType& type : types.all()) {
        checkParent(types, type, out);
    }
    checkCircles(types, out);
}

} // namespace scenariomatch::lint
