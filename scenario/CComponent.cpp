#include "scenario/CComponent.h"

#include <iostream>

CComponent::~CComponent() = default;

void CComponent::print() const
{
    std::cout << "\t\t" << m_variable << ' ' << m_kind << ' ' << m_modelName << ' ';
    for (const std::string& argument : m_arguments) {
        std::cout << argument << ' ';
    }
    std::cout << '[' << m_minDuration << ',' << m_maxDuration << "]\n";
}
