#include "types/CSPlainValue.h"

#include "types/CSAllTypes.h"

#include <typeinfo>

namespace
{

// The object as the class that belongs to its tag, or null. The exact class, which nearly every
// value has, is told at once.
template <class Class>
const Class* as(const CSBasicType& object)
{
    if (typeid(object) == typeid(Class)) {
        return static_cast<const Class*>(&object);
    }
    return dynamic_cast<const Class*>(&object);
}

void setPoint(CSPlainValue& value, const CSPlainValue::Position& position)
{
    value.m_kind = CSPlainValue::Kind::Point;
    value.m_point = position;
}

void viewPoint(CSPlainValue& value, const CSBasicType& object)
{
    if (object.m_type == "3DDPOINT") {
        if (const auto* point = as<CS3DDPoint>(object)) {
            setPoint(value, {point->m_x, point->m_y, point->m_z, true});
        }
    } else if (object.m_type == "2DDPOINT") {
        if (const auto* point = as<CS2DDPoint>(object)) {
            setPoint(value, {point->m_x, point->m_y, 0.0, false});
        }
    } else if (object.m_type == "3DIPOINT") {
        if (const auto* point = as<CS3DIPoint>(object)) {
            setPoint(
                value,
                {static_cast<double>(point->m_x),
                 static_cast<double>(point->m_y),
                 static_cast<double>(point->m_z),
                 true});
        }
    } else if (object.m_type == "2DIPOINT") {
        if (const auto* point = as<CS2DIPoint>(object)) {
            setPoint(
                value,
                {static_cast<double>(point->m_x), static_cast<double>(point->m_y), 0.0, false});
        }
    }
}

void viewNumber(CSPlainValue& value, const CSBasicType& object)
{
    if (object.m_type == "DOUBLE") {
        if (const auto* number = as<CSDouble>(object)) {
            value.m_kind = CSPlainValue::Kind::Number;
            value.m_number = number->m_value;
        }
    } else if (object.m_type == "INT") {
        if (const auto* number = as<CSInt>(object)) {
            value.m_kind = CSPlainValue::Kind::Number;
            value.m_number = static_cast<double>(number->m_value);
        }
    }
}

void viewBool(CSPlainValue& value, const CSBasicType& object)
{
    if (const auto* truth = as<CSBool>(object)) {
        value.m_kind = CSPlainValue::Kind::Bool;
        value.m_truth = truth->m_value;
        value.m_number = truth->m_confidence;
    }
}

void viewInterval(CSPlainValue& value, const CSBasicType& object)
{
    if (const auto* interval = as<CSInterval>(object)) {
        value.m_kind = CSPlainValue::Kind::Interval;
        value.m_interval = {interval->m_start.get(), interval->m_end.get()};
    }
}

template <class Class>
void viewObject(CSPlainValue& value, CSPlainValue::Kind kind)
{
    if (as<Class>(*value.m_object) != nullptr) {
        value.m_kind = kind;
    }
}

// No two tags share length and first letter but the kinds of points.
void view(CSPlainValue& value, const CSBasicType& object)
{
    const std::string& tag = object.m_type;
    switch (tag.empty() ? '\0' : tag.front()) {
    case '2':
    case '3':
        if (tag == "3DDPOINTS") {
            viewObject<CS3DDPoints>(value, CSPlainValue::Kind::Points);
        } else {
            viewPoint(value, object);
        }
        break;
    case 'B':
        if (tag == "BOOL") {
            viewBool(value, object);
        }
        break;
    case 'S':
        if (tag == "STRING") {
            viewObject<CSString>(value, CSPlainValue::Kind::Text);
        }
        break;
    case 'T':
        if (tag == "TIMESTAMP") {
            viewObject<CSTimeStamp>(value, CSPlainValue::Kind::TimeStamp);
        }
        break;
    default:
        if (tag == "INTERVAL") {
            viewInterval(value, object);
        } else {
            viewNumber(value, object);
        }
    }
}

} // namespace

CSPlainValue::CSPlainValue(const CSBasicType* object)
    : m_object(object)
{
    if (object != nullptr) {
        m_kind = Kind::Other;
        view(*this, *object);
    }
}

CSPlainValue CSPlainValue::boolean(bool truth, double confidence)
{
    CSPlainValue value;
    value.m_kind = Kind::Bool;
    value.m_truth = truth;
    value.m_number = confidence;
    return value;
}

CSPlainValue CSPlainValue::number(double number)
{
    CSPlainValue value;
    value.m_kind = Kind::Number;
    value.m_number = number;
    return value;
}

CSPlainValue CSPlainValue::interval(const CSTimeStamp* start, const CSTimeStamp* end)
{
    CSPlainValue value;
    value.m_kind = Kind::Interval;
    value.m_interval = {start, end};
    return value;
}

const CSString* CSPlainValue::text() const
{
    return m_kind == Kind::Text ? static_cast<const CSString*>(m_object) : nullptr;
}

const CSTimeStamp* CSPlainValue::timeStamp() const
{
    return m_kind == Kind::TimeStamp ? static_cast<const CSTimeStamp*>(m_object) : nullptr;
}

const CS3DDPoints* CSPlainValue::points() const
{
    return m_kind == Kind::Points ? static_cast<const CS3DDPoints*>(m_object) : nullptr;
}
