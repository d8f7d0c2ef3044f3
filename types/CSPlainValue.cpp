#include "types/CSPlainValue.h"

#include <string_view>
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

void viewPoint(CSPlainValue& value, const CSBasicType& object, std::string_view tag)
{
    if (tag == "3DDPOINT") {
        if (const auto* point = as<CS3DDPoint>(object)) {
            setPoint(value, {point->m_x, point->m_y, point->m_z, true});
        }
    } else if (tag == "2DDPOINT") {
        if (const auto* point = as<CS2DDPoint>(object)) {
            setPoint(value, {point->m_x, point->m_y, 0.0, false});
        }
    } else if (tag == "3DIPOINT") {
        if (const auto* point = as<CS3DIPoint>(object)) {
            setPoint(
                value,
                {static_cast<double>(point->m_x),
                 static_cast<double>(point->m_y),
                 static_cast<double>(point->m_z),
                 true});
        }
    } else if (tag == "2DIPOINT") {
        if (const auto* point = as<CS2DIPoint>(object)) {
            setPoint(
                value,
                {static_cast<double>(point->m_x), static_cast<double>(point->m_y), 0.0, false});
        }
    }
}

void viewNumber(CSPlainValue& value, const CSBasicType& object, std::string_view tag)
{
    if (tag == "DOUBLE") {
        if (const auto* number = as<CSDouble>(object)) {
            value.m_kind = CSPlainValue::Kind::Number;
            value.m_number = number->m_value;
        }
    } else if (tag == "INT") {
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

// The first letter tells most tags apart.
void view(CSPlainValue& value, const CSBasicType& object)
{
    const std::string_view tag = object.m_type;
    switch (tag.empty() ? '\0' : tag.front()) {
    case '2':
    case '3':
        if (tag == "3DDPOINTS") {
            viewObject<CS3DDPoints>(value, CSPlainValue::Kind::Points);
        } else {
            viewPoint(value, object, tag);
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
            viewNumber(value, object, tag);
        }
    }
}

} // namespace

// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): one member of the union is set
CSPlainValue::CSPlainValue(const CSBasicType* object)
    : m_object(object)
{
    if (object != nullptr) {
        m_kind = Kind::Other;
        view(*this, *object);
    }
}
