#include "lint/Checks.h"

namespace scenariomatch::lint
{

void checkProject(const Project& project, Diagnostics& out)
{
    checkObjectTypes(project.types(), out);
    checkDeclaredOperators(project, out);
    for (const Model& model : project.models()) {
        if (!model.isBroken) {
            checkModel(project, model, out);
            checkComponents(project, model, out);
            checkConstraints(project, model, out);
        }
    }
    checkUse(project, out);
    out.sort();
}

} // namespace scenariomatch::lint
