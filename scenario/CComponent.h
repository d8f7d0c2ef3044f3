#pragma once

#include "types/Export.h"

#include <string>
#include <vector>

// One component of a composite model: a sub-model with the variables passed to it.
//
//     (c1 : PrimitiveState Inside(p1, z1) [2, 10])
class CS_EXPORT CComponent
{
public:
    CComponent() = default;
    CComponent(const CComponent&) = default;
    CComponent(CComponent&&) = default;
    CComponent& operator=(const CComponent&) = default;
    CComponent& operator=(CComponent&&) = default;
    virtual ~CComponent();

    // Writes one line to standard output.
    void print() const;

    // The kind keyword before the sub-model's name; read and printed only.
    std::string m_kind;
    std::string m_variable;
    std::string m_modelName;
    std::vector<std::string> m_arguments;
    // Bounds in brackets, in seconds; read and printed, not enforced.
    double m_minDuration = 1.0;
    double m_maxDuration = 1.0;
};
