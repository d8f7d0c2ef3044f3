#pragma once

#include "host/HostExport.h"
#include "host/Information3D.h"

#include <string>
#include <utility>

namespace scenariomatch
{

// Left, top and size of an actor in the image, in pixels.
struct BoundingBox2D
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// An actor's place in the scene.
struct Position3D
{
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

} // namespace scenariomatch

// One tracked actor in one frame, as the tracker sees it. A value with a platform type such as
// "PERSON".
//
// Example:
//     rhmDataActor actor;
//     actor.setIdent(3);
//     actor.setType("PERSON");
//     actor.setBoundingBox2D({.x = 10, .y = 20, .width = 5, .height = 4});
class CS_HOST_EXPORT rhmDataActor
{
public:
    int getIdent() const { return m_ident; }

    const std::string& getType() const { return m_type; }

    const scenariomatch::BoundingBox2D& getBoundingBox2D() const { return m_boundingBox2D; }

    const Information3D& getInformation3D() const { return m_information3D; }

    const scenariomatch::Position3D& getCurrentPosition() const { return m_currentPosition; }

    void setIdent(int ident) { m_ident = ident; }

    void setType(std::string type) { m_type = std::move(type); }

    void setBoundingBox2D(const scenariomatch::BoundingBox2D& box) { m_boundingBox2D = box; }

    void setInformation3D(const Information3D& information) { m_information3D = information; }

    void setCurrentPosition(const scenariomatch::Position3D& position)
    {
        m_currentPosition = position;
    }

private:
    int m_ident = 0;
    std::string m_type;
    scenariomatch::BoundingBox2D m_boundingBox2D;
    Information3D m_information3D;
    scenariomatch::Position3D m_currentPosition;
};
