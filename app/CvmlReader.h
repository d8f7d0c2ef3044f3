#pragma once

#include "app/FrameOrder.h"
#include "app/IdSet.h"
#include "app/TrackReader.h"

#include <QXmlStreamReader>

#include <memory>
#include <optional>
#include <string>

namespace scenariomatch
{

// The object or group whose elements are being read.
struct OpenCvmlObject
{
    int id = 0;
    bool isGroup = false;
    bool isBag = false;
    // Something is wrong with it and has been reported.
    bool isFaulty = false;
    std::optional<MeasuredBox> box;
};

// Reads CVML, the XML of hand-labelled clips: objects and groups with boxes given by their centre
// and size in pixels.
//
//     <dataset name="Hall"><frame number="0">
//       <objectlist><object id="3"><box xc="5" yc="9" w="4" h="8"/>
//         <hypothesislist><hypothesis><role>walker</role></hypothesis></hypothesislist></object></objectlist>
//       <grouplist><group id="0"><box .../></group></grouplist>
//     </frame></dataset>
//
// An object is a "PERSON" unless its role is "leaving object", which makes it a "BAG"; a group is a
// "GROUP" and its number gets 10000 added. All other labels are passed over: they are what
// recognition is measured against. Frames have no clock; without a frame rate they are taken at 25
// per second.
//
// The text is taken in line by line and every frame is handed out at its end.
class CvmlReader : public TrackReader
{
public:
    // Keeps the numbers of groups apart from those of objects.
    static constexpr int kFirstGroup = 10'000;
    static constexpr double kFramesPerSecond = 25.0;

    CvmlReader(
        std::unique_ptr<TrackInput> input,
        const TrackReaderOptions& options,
        TrackProblems& problems);

    bool next(TrackFrame& frame) override;

    const std::optional<TrackFailure>& failure() const override { return m_failure; }

    double progress() const override { return m_input->progress(); }

private:
    bool advance();
    bool feed();
    void finish(const std::string& damage);
    void readStart(TrackFrame& frame);
    bool readEnd(TrackFrame& frame);
    void countRefused(QStringView name);
    void dropFrame(TrackFrame& frame);
    void readText();
    void readFrameStart(TrackFrame& frame);
    void readObjectStart();
    void readBox();
    void readObjectEnd(TrackFrame& frame);
    std::optional<double> attribute(QLatin1String name);
    std::optional<int> wholeAttribute(QLatin1String name);
    void refuseObject(Oddity kind, const std::string& reason);
    TrackPlace place() const;

    std::unique_ptr<TrackInput> m_input;
    TrackProblems& m_problems;
    FrameOrder m_order;
    GroundMapper m_ground;
    TrackLimits m_limits;
    QXmlStreamReader m_xml;
    std::string m_lastPiece;
    std::size_t m_lastPieceLine = 0;
    std::size_t m_fedSinceToken = 0;
    std::size_t m_depth = 0;
    bool m_hasRoot = false;
    bool m_isFinished = false;
    IdSet m_ids;
    // Set between the tags of a frame that is wanted.
    bool m_isInFrame = false;
    // Within a frame that is left out.
    bool m_isRefused = false;
    std::optional<OpenCvmlObject> m_object;
    std::size_t m_objectDepth = 0;
    // The text of the role being read.
    std::optional<std::string> m_role;
    std::optional<TrackFailure> m_failure;
};

} // namespace scenariomatch
