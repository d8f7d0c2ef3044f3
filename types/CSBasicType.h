#pragma once

#include "types/Export.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

// Base of all values: attribute values of agents, constants of models, arguments and results of
// operators.
//
// Values are held and passed as std::shared_ptr and are owned by whoever holds one. The concrete
// class is told by the tag m_type, not by run-time type information; whoever switches on the tag
// also makes sure of the class, because a converted value carries a tag that is not its class's.
// Not safe to change from two threads; the pointers' counts are.
class CS_EXPORT CSBasicType
{
public:
    CSBasicType() = default;

    explicit CSBasicType(std::string_view type)
        : m_type(type)
    {
    }

    CSBasicType(const CSBasicType&) = default;
    CSBasicType(CSBasicType&&) = default;
    CSBasicType& operator=(const CSBasicType&) = default;
    CSBasicType& operator=(CSBasicType&&) = default;
    virtual ~CSBasicType();

    // The tag: "BOOL", "STRING", "INT", "DOUBLE", "3DDPOINT", "3DIPOINT", "2DDPOINT", "2DIPOINT",
    // "TIMESTAMP", "INTERVAL", "3DDPOINTS" or "ACCESSORAGENT".
    std::string m_type;
    // Degree of belief in the value.
    double m_confidence = 1.0;
    // Set by CSAgent::set on the first value that is stored for an attribute.
    bool m_flag = false;
    // The frame position at which CSAgent::set stored the value.
    std::int32_t m_frame = 0;
    // The earlier values of the attribute whose current value this is, by frame position.
    std::map<int, std::shared_ptr<CSBasicType>> m_history;

protected:
    // The base part that a conversion takes over: everything but the frame position.
    struct Converted
    {
        const CSBasicType& source;
    };

    explicit CSBasicType(Converted from);
};
