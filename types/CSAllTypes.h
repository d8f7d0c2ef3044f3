#pragma once

#include "types/CSBasicType.h"
#include "types/CSInterval.h"
#include "types/CSTimeStamp.h"

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// The value classes beside the two time classes, and what can be done with values of unknown type.
//
// Every class X has a default constructor, value constructors, and a conversion X(const
// CSBasicType&) that takes over the base part of a value (tag, confidence, flag, history) and none
// of its own fields: a means to look at the base part through a concrete class. The tag stays the
// source's. The constructors that recognition uses in every frame stand in the classes, so that
// they are compiled into their callers.

// A truth value; its confidence (0 to 1) is the degree of belief in it. Tag "BOOL".
class CS_EXPORT CSBool : public CSBasicType
{
public:
    CSBool() noexcept
        : CSBasicType("BOOL")
    {
    }

    explicit CSBool(const bool& value) noexcept
        : CSBasicType("BOOL")
        , m_value(value)
    {
    }

    CSBool(const bool& value, double confidence) noexcept
        : CSBool(value)
    {
        m_confidence = confidence;
    }

    explicit CSBool(const CSBasicType& other);

    // Compares the values, not the confidences.
    bool operator==(const CSBool& other) const;
    bool operator!=(const CSBool& other) const;

    bool m_value = false;
};

// A text, compared byte for byte. Tag "STRING".
class CS_EXPORT CSString : public CSBasicType
{
public:
    CSString() noexcept
        : CSBasicType("STRING")
    {
    }

    explicit CSString(std::string value) noexcept
        : CSBasicType("STRING")
        , m_value(std::move(value))
    {
    }

    explicit CSString(const CSBasicType& other);

    bool operator==(const CSString& other) const;
    bool operator!=(const CSString& other) const;

    std::string m_value;
};

// A whole number. Tag "INT".
class CS_EXPORT CSInt : public CSBasicType
{
public:
    CSInt() noexcept
        : CSBasicType("INT")
    {
    }

    explicit CSInt(int value) noexcept
        : CSBasicType("INT")
        , m_value(value)
    {
    }

    explicit CSInt(const CSBasicType& other);

    bool operator==(const CSInt& other) const;
    bool operator!=(const CSInt& other) const;

    std::int32_t m_value = -1;
};

// A number, compared exactly: no tolerance, NaN is unequal to everything. Tag "DOUBLE".
class CS_EXPORT CSDouble : public CSBasicType
{
public:
    CSDouble() noexcept
        : CSBasicType("DOUBLE")
    {
    }

    explicit CSDouble(double value) noexcept
        : CSBasicType("DOUBLE")
        , m_value(value)
    {
    }

    explicit CSDouble(const CSBasicType& other);

    bool operator==(const CSDouble& other) const;
    bool operator!=(const CSDouble& other) const;

    double m_value = -1.0;
};

// A point in space with exact comparison. Tag "3DDPOINT".
class CS_EXPORT CS3DDPoint : public CSBasicType
{
public:
    CS3DDPoint() noexcept
        : CSBasicType("3DDPOINT")
    {
    }

    CS3DDPoint(double x, double y, double z) noexcept
        : CSBasicType("3DDPOINT")
        , m_x(x)
        , m_y(y)
        , m_z(z)
    {
    }

    explicit CS3DDPoint(const CSBasicType& other);

    bool operator==(const CS3DDPoint& other) const;
    bool operator!=(const CS3DDPoint& other) const;

    double m_x = 0.0;
    double m_y = 0.0;
    double m_z = 0.0;
};

// A point in space with whole coordinates, set through the members. Tag "3DIPOINT".
class CS_EXPORT CS3DIPoint : public CSBasicType
{
public:
    CS3DIPoint();
    explicit CS3DIPoint(const CSBasicType& other);

    bool operator==(const CS3DIPoint& other) const;
    bool operator!=(const CS3DIPoint& other) const;

    std::int32_t m_x = 0;
    std::int32_t m_y = 0;
    std::int32_t m_z = 0;
};

// A point in the plane with exact comparison. Tag "2DDPOINT".
class CS_EXPORT CS2DDPoint : public CSBasicType
{
public:
    CS2DDPoint() noexcept
        : CSBasicType("2DDPOINT")
    {
    }

    CS2DDPoint(double x, double y) noexcept
        : CSBasicType("2DDPOINT")
        , m_x(x)
        , m_y(y)
    {
    }

    explicit CS2DDPoint(const CSBasicType& other);

    bool operator==(const CS2DDPoint& other) const;
    bool operator!=(const CS2DDPoint& other) const;

    double m_x = 0.0;
    double m_y = 0.0;
};

// A point in the plane with whole coordinates, set through the members. Tag "2DIPOINT".
class CS_EXPORT CS2DIPoint : public CSBasicType
{
public:
    CS2DIPoint();
    explicit CS2DIPoint(const CSBasicType& other);

    bool operator==(const CS2DIPoint& other) const;
    bool operator!=(const CS2DIPoint& other) const;

    std::int32_t m_x = 0;
    std::int32_t m_y = 0;
};

// A list of points, held by value. Tag "3DDPOINTS".
class CS_EXPORT CS3DDPoints : public CSBasicType
{
public:
    CS3DDPoints();
    explicit CS3DDPoints(const CSBasicType& other);

    // Appends a copy of the point.
    void addPoint(CS3DDPoint point);

    bool operator==(const CS3DDPoints& other) const;
    bool operator!=(const CS3DDPoints& other) const;

    std::vector<CS3DDPoint> m_points;
};

// The attribute m_attribute of the agent bound to the variable m_agent, passed unevaluated. Tag
// "ACCESSORAGENT".
class CS_EXPORT CSAccessorAgent : public CSBasicType
{
public:
    CSAccessorAgent();
    CSAccessorAgent(std::string agent, std::string attribute);
    explicit CSAccessorAgent(const CSBasicType& other);

    bool operator==(const CSAccessorAgent& other) const;
    bool operator!=(const CSAccessorAgent& other) const;

    std::string m_agent;
    std::string m_attribute;
};

// The printed forms. Numbers follow the stream's settings; points end with a blank after each
// coordinate, lists of points with one more after each point; a truth value is followed by its
// confidence in brackets.
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CSBool& value);
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CSString& value);
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CSInt& value);
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CSDouble& value);
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CS3DDPoint& value);
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CS3DIPoint& value);
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CS2DDPoint& value);
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CS2DIPoint& value);
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CS3DDPoints& value);
CS_EXPORT std::ostream& operator<<(std::ostream& out, const CSAccessorAgent& value);

// Value equality and inequality across the hierarchy; both pointers must be set. Values with
// different tags are neither equal nor different: both answer false after a message on standard
// error, as they do for a tag that has no comparison
// ("ACCESSORAGENT" among them).
CS_EXPORT bool
equal(const std::shared_ptr<CSBasicType>& left, const std::shared_ptr<CSBasicType>& right);
CS_EXPORT bool
diff(const std::shared_ptr<CSBasicType>& left, const std::shared_ptr<CSBasicType>& right);

// The printed form of any value, chosen by its tag; a fixed text for a tag that has none.
CS_EXPORT std::string toString(const CSBasicType* value);
