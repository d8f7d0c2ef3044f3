#pragma once

#include "CSAllTypes.h"

#include <map>
#include <string>

// An object of any type. One whose type has no class of its own keeps its attributes by name.
class CSAgent
{
public:
    CSAgent() = default;
    CSAgent(const CSAgent&) = delete;
    CSAgent& operator=(const CSAgent&) = delete;
    virtual ~CSAgent() = default;

    CSBasicType* getValue(const std::string& attribute) { return m_values[attribute]; }

    void setValue(const std::string& attribute, CSBasicType* value) { m_values[attribute] = value; }

    CSBasicType* getHValue(const std::string& attribute, int pos)
    {
        return m_histories[attribute][pos];
    }

    void setHValue(const std::string& attribute, CSBasicType* value, int pos)
    {
        m_histories[attribute][pos] = value;
    }

    std::map<int, CSBasicType*> getHAllValue(const std::string& attribute)
    {
        return m_histories[attribute];
    }

    // The name of the object's type, by which the accessors find its class.
    std::string Type;
    bool m_constant = false;

private:
    std::map<std::string, CSBasicType*> m_values;
    std::map<std::string, std::map<int, CSBasicType*>> m_histories;
};
