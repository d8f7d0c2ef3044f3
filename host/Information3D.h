#pragma once

// Size of a tracked actor in the scene, in metres (or the unit of the positions). A value.
class Information3D
{
public:
    Information3D() = default;

    Information3D(float height, float width, float depth)
        : m_height(height)
        , m_width(width)
        , m_depth(depth)
    {
    }

    float getHeight() const { return m_height; }

    float getWidth() const { return m_width; }

    float getDepth() const { return m_depth; }

private:
    float m_height = 0.0F;
    float m_width = 0.0F;
    float m_depth = 0.0F;
};
