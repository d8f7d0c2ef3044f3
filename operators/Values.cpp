#include "operators/Values.h"

namespace scenariomatch
{

std::vector<std::string> numberTypes()
{
    return {"INT", "DOUBLE"};
}

std::vector<std::string> pointTypes()
{
    return {"3DDPOINT", "3DIPOINT", "2DDPOINT", "2DIPOINT"};
}

std::vector<std::string> placeTypes()
{
    std::vector<std::string> types = pointTypes();
    types.emplace_back("3DDPOINTS");
    return types;
}

std::vector<std::string> anyTypes()
{
    return {
        "BOOL",
        "STRING",
        "INT",
        "DOUBLE",
        "3DDPOINT",
        "3DIPOINT",
        "2DDPOINT",
        "2DIPOINT",
        "TIMESTAMP",
        "INTERVAL",
        "3DDPOINTS",
        "ACCESSORAGENT"};
}

} // namespace scenariomatch
