#pragma once

#include "app/report/ActorTracks.h"
#include "app/report/ReportEvents.h"
#include "app/report/SceneObjects.h"
#include "app/report/ScenePicture.h"
#include "app/RunStatistics.h"
#include "app/TrackFrame.h"
#include "plugin/RecognitionView.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

// What the tables of a report are made from.
struct ReportTableSources
{
    std::string title;
    TrackClock start;
    // Milliseconds from the first frame to the last one.
    std::int64_t end = 0;
    std::size_t frames = 0;
    std::vector<PlanObject> scene;
    std::optional<ScenePicture> picture;
    bool isInPixels = false;
    const ActorTracks& tracks;
    const RecognitionView& view;
    // By name of the model.
    std::map<std::string, std::string> modelTexts;
    const ReportEvents& events;
    std::vector<RunFigure> figures;
};

// One JSON object with scene, actors, models and events; see docs/report.md.
std::string reportTables(const ReportTableSources& sources);

} // namespace scenariomatch
