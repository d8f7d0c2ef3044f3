#include "types/CSAllTypes.h"

#include <iostream>
#include <optional>
#include <ostream>
#include <sstream>
#include <string_view>
#include <type_traits>
#include <utility>

CSBool::CSBool(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

bool CSBool::operator==(const CSBool& other) const
{
    return m_value == other.m_value;
}

bool CSBool::operator!=(const CSBool& other) const
{
    return !(*this == other);
}

CSString::CSString(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

bool CSString::operator==(const CSString& other) const
{
    return m_value == other.m_value;
}

bool CSString::operator!=(const CSString& other) const
{
    return !(*this == other);
}

CSInt::CSInt(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

bool CSInt::operator==(const CSInt& other) const
{
    return m_value == other.m_value;
}

bool CSInt::operator!=(const CSInt& other) const
{
    return !(*this == other);
}

CSDouble::CSDouble(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

bool CSDouble::operator==(const CSDouble& other) const
{
    return m_value == other.m_value;
}

bool CSDouble::operator!=(const CSDouble& other) const
{
    return !(*this == other);
}

CS3DDPoint::CS3DDPoint(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

bool CS3DDPoint::operator==(const CS3DDPoint& other) const
{
    return m_x == other.m_x && m_y == other.m_y && m_z == other.m_z;
}

bool CS3DDPoint::operator!=(const CS3DDPoint& other) const
{
    return !(*this == other);
}

CS3DIPoint::CS3DIPoint()
    : CSBasicType("3DIPOINT")
{
}

CS3DIPoint::CS3DIPoint(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

bool CS3DIPoint::operator==(const CS3DIPoint& other) const
{
    return m_x == other.m_x && m_y == other.m_y && m_z == other.m_z;
}

bool CS3DIPoint::operator!=(const CS3DIPoint& other) const
{
    return !(*this == other);
}

CS2DDPoint::CS2DDPoint(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

bool CS2DDPoint::operator==(const CS2DDPoint& other) const
{
    return m_x == other.m_x && m_y == other.m_y;
}

bool CS2DDPoint::operator!=(const CS2DDPoint& other) const
{
    return !(*this == other);
}

CS2DIPoint::CS2DIPoint()
    : CSBasicType("2DIPOINT")
{
}

CS2DIPoint::CS2DIPoint(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

bool CS2DIPoint::operator==(const CS2DIPoint& other) const
{
    return m_x == other.m_x && m_y == other.m_y;
}

bool CS2DIPoint::operator!=(const CS2DIPoint& other) const
{
    return !(*this == other);
}

CS3DDPoints::CS3DDPoints()
    : CSBasicType("3DDPOINTS")
{
}

CS3DDPoints::CS3DDPoints(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

void CS3DDPoints::addPoint(CS3DDPoint point)
{
    m_points.push_back(std::move(point));
}

bool CS3DDPoints::operator==(const CS3DDPoints& other) const
{
    return m_points == other.m_points;
}

bool CS3DDPoints::operator!=(const CS3DDPoints& other) const
{
    return !(*this == other);
}

CSAccessorAgent::CSAccessorAgent()
    : CSBasicType("ACCESSORAGENT")
{
}

CSAccessorAgent::CSAccessorAgent(std::string agent, std::string attribute)
    : CSBasicType("ACCESSORAGENT")
    , m_agent(std::move(agent))
    , m_attribute(std::move(attribute))
{
}

CSAccessorAgent::CSAccessorAgent(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

bool CSAccessorAgent::operator==(const CSAccessorAgent& other) const
{
    return m_agent == other.m_agent && m_attribute == other.m_attribute;
}

bool CSAccessorAgent::operator!=(const CSAccessorAgent& other) const
{
    return !(*this == other);
}

std::ostream& operator<<(std::ostream& out, const CSBool& value)
{
    return out << value.m_value << " [" << value.m_confidence << "]";
}

std::ostream& operator<<(std::ostream& out, const CSString& value)
{
    return out << value.m_value;
}

std::ostream& operator<<(std::ostream& out, const CSInt& value)
{
    return out << value.m_value;
}

std::ostream& operator<<(std::ostream& out, const CSDouble& value)
{
    return out << value.m_value;
}

std::ostream& operator<<(std::ostream& out, const CS3DDPoint& value)
{
    return out << value.m_x << " " << value.m_y << " " << value.m_z << " ";
}

std::ostream& operator<<(std::ostream& out, const CS3DIPoint& value)
{
    return out << value.m_x << " " << value.m_y << " " << value.m_z << " ";
}

std::ostream& operator<<(std::ostream& out, const CS2DDPoint& value)
{
    return out << value.m_x << " " << value.m_y << " ";
}

std::ostream& operator<<(std::ostream& out, const CS2DIPoint& value)
{
    return out << value.m_x << " " << value.m_y << " ";
}

std::ostream& operator<<(std::ostream& out, const CS3DDPoints& value)
{
    for (const CS3DDPoint& point : value.m_points) {
        out << point << " ";
    }
    return out;
}

std::ostream& operator<<(std::ostream& out, const CSAccessorAgent& value)
{
    return out << value.m_agent << "->" << value.m_attribute;
}

namespace
{

// Asks the question about the class that the tag names, in the fixed order of the tags; nothing for
// a tag without one.
template <class Question>
auto askClassOf(std::string_view tag, Question question)
    -> decltype(question(std::type_identity<CSInt>()))
{
    if (tag == "INT") {
        return question(std::type_identity<CSInt>());
    }
    if (tag == "3DDPOINT") {
        return question(std::type_identity<CS3DDPoint>());
    }
    if (tag == "BOOL") {
        return question(std::type_identity<CSBool>());
    }
    if (tag == "STRING") {
        return question(std::type_identity<CSString>());
    }
    if (tag == "DOUBLE") {
        return question(std::type_identity<CSDouble>());
    }
    if (tag == "3DIPOINT") {
        return question(std::type_identity<CS3DIPoint>());
    }
    if (tag == "2DDPOINT") {
        return question(std::type_identity<CS2DDPoint>());
    }
    if (tag == "2DIPOINT") {
        return question(std::type_identity<CS2DIPoint>());
    }
    if (tag == "TIMESTAMP") {
        return question(std::type_identity<CSTimeStamp>());
    }
    if (tag == "INTERVAL") {
        return question(std::type_identity<CSInterval>());
    }
    if (tag == "3DDPOINTS") {
        return question(std::type_identity<CS3DDPoints>());
    }
    return std::nullopt;
}

// Whether two values of one tag are equal; nothing when they cannot be compared. A converted value
// carries a tag that is not its class's, so the class is looked at as well.
std::optional<bool> compare(const CSBasicType& left, const CSBasicType& right)
{
    if (left.m_type != right.m_type) {
        std::cerr << "Error in operator =, the type " << left.m_type
                  << " can not be compared with the type " << right.m_type << '\n';
        return std::nullopt;
    }
    const auto isEqual = [&left, &right](auto tagged) -> std::optional<bool> {
        using Value = typename decltype(tagged)::type;
        const auto* leftValue = dynamic_cast<const Value*>(&left);
        const auto* rightValue = dynamic_cast<const Value*>(&right);
        if (leftValue == nullptr || rightValue == nullptr) {
            return std::nullopt;
        }
        return *leftValue == *rightValue;
    };
    const std::optional<bool> answer = askClassOf(left.m_type, isEqual);
    if (!answer) {
        std::cerr << "Error in operator =, the type " << left.m_type << " is unknown" << '\n';
    }
    return answer;
}

} // namespace

bool equal(const std::shared_ptr<CSBasicType>& left, const std::shared_ptr<CSBasicType>& right)
{
    return compare(*left, *right).value_or(false);
}

bool diff(const std::shared_ptr<CSBasicType>& left, const std::shared_ptr<CSBasicType>& right)
{
    // Every class's != is the negation of its ==.
    return !compare(*left, *right).value_or(true);
}

std::string toString(const CSBasicType* value)
{
    const auto print = [value](auto tagged) -> std::optional<std::string> {
        const auto* typed = dynamic_cast<const typename decltype(tagged)::type*>(value);
        if (typed == nullptr) {
            return std::nullopt;
        }
        std::ostringstream out;
        out << *typed;
        return out.str();
    };
    return askClassOf(value->m_type, print).value_or("toString : UNKNOWN BASIC TYPE (CSAllTypes)");
}
