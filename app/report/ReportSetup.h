#pragma once

#include "app/RecognitionSetup.h"
#include "app/report/ReportRecorder.h"
#include "app/report/ReportTemplate.h"
#include "app/RunOptions.h"
#include "host/rhmAbstractProcessEventRecognition.h"

#include <optional>
#include <string>
#include <string_view>

namespace scenariomatch
{

// Why a program that carries this page writes no reports; nothing where it does.
std::optional<RunFault> faultOfReports(std::string_view page = reportTemplate());

// How long the tracks are in milliseconds, for which they are read once; nothing for those that
// can be read only once.
std::optional<std::int64_t> lengthOfTracks(const RunOptions& options);

// Reads the picture that is named, if one is. Why it cannot be used, or nothing.
std::optional<RunFault>
readPicture(const SceneOptions& options, std::optional<ScenePicture>& picture);

// What a report of this process is told, without picture and without other events.
ReportTerms reportTerms(
    const RunOptions& options,
    const RecognitionSetup& setup,
    const rhmAbstractProcessEventRecognition& process);

// Writes the page. Why it could not be written, or nothing.
std::optional<RunFault> writeReport(const std::string& path, const ReportData& data);

// Why a report cannot be written there, as far as that can be told before; or nothing.
std::optional<RunFault> faultOfOutput(const std::string& path);

} // namespace scenariomatch
