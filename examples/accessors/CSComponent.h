#pragma once

#include "CSAgent.h"

// A recognised sub-event: it has a name and an interval, and what else it is given.
class CSComponent : public CSAgent
{
public:
    CSComponent() { Type = "Component"; }

    CSBasicType* getValue(const std::string& attribute)
    {
        if (attribute == "Name") {
            return Name;
        }
        return attribute == "Interval" ? Interval : CSAgent::getValue(attribute);
    }

    void setValue(const std::string& attribute, CSBasicType* value)
    {
        if (attribute == "Name") {
            Name = static_cast<CSString*>(value);
        } else if (attribute == "Interval") {
            Interval = static_cast<CSInterval*>(value);
        } else {
            CSAgent::setValue(attribute, value);
        }
    }

    CSString* Name = nullptr;
    CSInterval* Interval = nullptr;
};
