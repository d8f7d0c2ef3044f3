#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// The values of the attributes. Whoever makes a value deletes it.
class CSBasicType
{
public:
    CSBasicType() = default;
    CSBasicType(const CSBasicType&) = delete;
    CSBasicType& operator=(const CSBasicType&) = delete;
    virtual ~CSBasicType() = default;
};

template <typename Value>
class CSValue : public CSBasicType
{
public:
    explicit CSValue(Value value = Value())
        : m_value(std::move(value))
    {
    }

    Value m_value;
};

// One class for every tag of a description; CSInt(-1) is what generated code answers for an
// attribute that it does not know.
using CSBool = CSValue<bool>;
using CSString = CSValue<std::string>;
using CSInt = CSValue<int>;
using CSDouble = CSValue<double>;
using CS3DDPoint = CSValue<std::array<double, 3>>;
using CS3DIPoint = CSValue<std::array<int, 3>>;
using CS2DDPoint = CSValue<std::array<double, 2>>;
using CS2DIPoint = CSValue<std::array<int, 2>>;
// Milliseconds.
using CSTimeStamp = CSValue<std::int64_t>;
using CSInterval = CSValue<std::pair<std::int64_t, std::int64_t>>;
using CS3DDPoints = CSValue<std::vector<std::array<double, 3>>>;
// An agent's variable and attribute.
using CSAccessorAgent = CSValue<std::pair<std::string, std::string>>;
