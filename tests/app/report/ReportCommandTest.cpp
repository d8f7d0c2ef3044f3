#include "app/report/ReportCommand.h"

#include "app/report/ReportSetup.h"
#include "app/report/ReportTemplate.h"
#include "tests/app/ProgramRun.h"
#include "tests/app/report/DecodedReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <sstream>
#include <tuple>
#include <vector>

namespace scenariomatch
{

namespace
{

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kExamples = SCENARIOMATCH_TEST_DATA "/../../examples/";
const std::string kLobby = kExamples + "lobby/lobby.yaml";
// Person 1 is in the zone Door from 1 s to 3 s and at 8 s.
const std::string kFiles = SCENARIOMATCH_TEST_DATA "/app/run/";
const std::string kDoor = "--params " + kFiles + "params.yaml --tracks " + kFiles + "tracks.txt";

class ReportCommand : public testing::Test
{
protected:
    void SetUp() override
    {
        if (reportTemplate().empty()) {
            GTEST_SKIP() << "built without reports";
        }
    }
};

// The tracks of an example's scene.
std::string tracksOf(const std::string& example, const std::string& scene)
{
    std::string tracks = temporary(scene + ".jsonl");
    const Outcome outcome = runProgram(
        "synth " + kExamples + example + "/scenes/" + scene + ".yaml --output " + tracks);
    EXPECT_EQ(outcome.status, 0) << outcome.talk;
    return tracks;
}

// The page that the command writes.
std::string pageOf(const std::string& arguments, const std::string& before = "")
{
    const std::string page = temporary("page.html");
    const Outcome outcome = runProgram("report " + arguments + " --output " + page, before);
    EXPECT_EQ(outcome.status, 0) << outcome.talk;
    EXPECT_THAT(outcome.out, IsEmpty());
    return contentOf(page);
}

std::vector<json> linesOf(const std::string& text)
{
    std::vector<json> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(json::parse(line));
    }
    return lines;
}

void expectRefused(const std::string& arguments, int status, const std::string& reason)
{
    const Outcome outcome = runProgram("report " + arguments);
    EXPECT_EQ(outcome.status, status) << arguments;
    EXPECT_THAT(outcome.talk, HasSubstr(reason));
}

std::size_t modelNamed(const json& data, const std::string& name)
{
    for (std::size_t i = 0; i < data["models"].size(); ++i) {
        if (data["models"][i]["name"] == name) {
            return i;
        }
    }
    ADD_FAILURE() << "there is no model " << name;
    return 0;
}

void write(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

} // namespace

TEST_F(ReportCommand, HoldsTheEventsOfRun)
{
    for (const auto& [example, scene] :
         {std::pair("lobby", "bag"), {"lobby", "meeting"}, {"lobby", "fall"}, {"gate", "flow"}}) {
        const std::string tracks = tracksOf(example, scene);
        const std::string input =
            fmt::format("--params {0}{1}/{1}.yaml --tracks {2}", kExamples, example, tracks);
        const Outcome run = runProgram("run " + input);
        const DecodedReport report = decodeReport(pageOf(input));
        const std::vector<json> lines = linesOf(run.out);
        EXPECT_GT(lines.size(), 3U);
        EXPECT_EQ(eventLines(report.data), lines) << scene;
        EXPECT_EQ(report.data["title"], example);
        EXPECT_EQ(report.data["actors"].size(), report.tracks["actors"].size());
        EXPECT_EQ(report.why["events"].size(), lines.size());
        EXPECT_EQ(report.why["models"].size(), report.data["models"].size());
    }
}

TEST_F(ReportCommand, ExplainsEveryEventAsExplainDoes)
{
    const std::string input = "--params " + kLobby + " --tracks " + tracksOf("lobby", "bag");
    const DecodedReport report = decodeReport(pageOf(input));
    const json& ids = report.data["events"]["id"];
    ASSERT_EQ(ids.size(), report.why["events"].size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const Outcome explained = runProgram(
            fmt::format("explain {} --event {} --format json", input, ids[i].get<int>()));
        EXPECT_EQ(report.why["events"][i], json::parse(explained.out)) << ids[i];
    }
}

TEST_F(ReportCommand, CountsCandidatesAsExplainDoes)
{
    const std::string input = "--params " + kLobby + " --tracks " + tracksOf("lobby", "bag");
    const DecodedReport report = decodeReport(pageOf(input));
    EXPECT_EQ(report.why["binWidth"], 1000);
    EXPECT_EQ(report.why["lookBack"], 120'000.0);
    const std::vector<std::tuple<std::string, int>> cases{
        {"StandTogether", 14}, {"AtBag", 5}, {"LyingOnFloor", 6}, {"BagLeft", 7}};
    for (const auto& [model, second] : cases) {
        const std::size_t index = modelNamed(report.data, model);
        const json& bin = report.why["models"][index]["bins"].at(static_cast<std::size_t>(second));
        const Outcome explained = runProgram(fmt::format(
            "explain {} --model {} --from {} --to {}.999 --format json",
            input,
            model,
            second,
            second));
        const json why = json::parse(explained.out);
        EXPECT_EQ(bin["frames"], why["frames"]) << model;
        EXPECT_EQ(bin["candidates"], why["candidates"]) << model;
        ASSERT_EQ(bin["constraints"].size(), why["constraints"].size());
        for (std::size_t i = 0; i < bin["constraints"].size(); ++i) {
            const json& expected = why["constraints"][i];
            EXPECT_EQ(bin["constraints"][i]["first_false"], expected["first_false"]) << model;
            EXPECT_EQ(
                bin["constraints"][i].value("nearest", json()), expected.value("nearest", json()));
            EXPECT_EQ(report.data["models"][index]["constraints"][i]["text"], expected["text"]);
            EXPECT_EQ(report.data["models"][index]["constraints"][i]["pure"], expected["pure"]);
        }
        json nearest = bin.value("nearest", json());
        if (nearest.is_object()) {
            EXPECT_EQ(nearest["rank"][0], nearest["false"].size());
            nearest.erase("rank");
        }
        EXPECT_EQ(nearest, why.value("nearest", json())) << model;
    }
}

TEST_F(ReportCommand, HasBinsThatAddUpToTheWhole)
{
    const std::string input = "--params " + kLobby + " --tracks " + tracksOf("lobby", "meeting");
    const DecodedReport report = decodeReport(pageOf(input));
    const json& bins = report.why["models"][modelNamed(report.data, "StandTogether")]["bins"];
    std::uint64_t frames = 0;
    std::uint64_t candidates = 0;
    for (const json& bin : bins) {
        frames += bin["frames"].get<std::uint64_t>();
        candidates += bin["candidates"].get<std::uint64_t>();
    }
    const json why =
        json::parse(runProgram("explain " + input + " --model StandTogether --format json").out);
    EXPECT_GT(candidates, 0U);
    EXPECT_EQ(frames, why["frames"]);
    EXPECT_EQ(frames, report.data["clock"]["frames"]);
    EXPECT_EQ(candidates, why["candidates"]);
}

TEST_F(ReportCommand, HasNullForATimeWithoutFrames)
{
    const std::string tracks = temporary("tracks.jsonl");
    const auto frame = [](int number, int second) {
        return fmt::format(
            "{{\"frame\":{},\"time\":\"2026-05-04T10:00:{:02}\",\"actors\":[{{\"id\":1,\"type\":"
            "\"PERSON\",\"position\":[1,1,0]}}]}}\n",
            number,
            second);
    };
    write(tracks, frame(1, 0) + frame(2, 3));
    const DecodedReport report =
        decodeReport(pageOf("--params " + kFiles + "params.yaml --tracks " + tracks));
    const json& bins = report.why["models"][0]["bins"];
    ASSERT_EQ(bins.size(), 4U);
    EXPECT_EQ(bins[0]["frames"], 1);
    EXPECT_TRUE(bins[1].is_null());
    EXPECT_TRUE(bins[2].is_null());
    EXPECT_EQ(bins[3]["frames"], 1);
}

TEST_F(ReportCommand, WritesTheSamePageTwice)
{
    EXPECT_EQ(pageOf(kDoor), pageOf(kDoor));
}

TEST_F(ReportCommand, HoldsTheModelsAsTheyAreWritten)
{
    const json data = decodeReport(pageOf(kDoor)).data;
    ASSERT_EQ(data["models"].size(), 1U);
    const json& model = data["models"][0];
    EXPECT_EQ(
        model["text"],
        "PrimitiveState (InZone,\n    PhysicalObjects((p : Person)(z : Zone))\n    "
        "Constraints((p inside z))\n    Alarm((Level : URGENT)(Text : Person in the zone))\n)");
    EXPECT_EQ(
        model["objects"],
        json::parse(R"([{"name":"p","type":"Person"},{"name":"z","type":"Zone"}])"));
    EXPECT_EQ(data["alarms"][model["alarm"].get<std::size_t>()], "URGENT");
    EXPECT_EQ(data["statistics"]["frames"], 9);
    EXPECT_EQ(data["statistics"]["reported instances"], 2);
    EXPECT_EQ(data["clock"]["start"], "2000-01-01T00:00:00.000");
    EXPECT_EQ(data["clock"]["end"], 8000);
    EXPECT_TRUE(data["scene"]["background"].is_null());
    EXPECT_EQ(data["scene"]["unit"], "m");
    EXPECT_EQ(data["scene"]["down"], false);
}

TEST_F(ReportCommand, KeepsNamesFromBreakingThePage)
{
    const std::string folder = temporary("files");
    std::filesystem::copy(kFiles, folder, std::filesystem::copy_options::recursive);
    const std::string hostile = "</script><script>alert(1)</script><!-- \"'&\x01 \xe2\x80\xa8 \xff";
    write(
        folder + "/models/zone.txt",
        "Scenarios {\nRun,\nPrimitiveState (InZone,\n    PhysicalObjects((p : Person)(z : Zone))\n"
        "    Constraints((p inside z))\n    Alarm((Level : URGENT)(Text : " +
            hostile + "))\n)\n}\n");
    write(
        folder + "/context.xml",
        "<Context name=\"run\"><Element kind=\"zone\" shape=\"polygon\" name=\"&lt;/script>&lt;!-- "
        "&quot;' \xe2\x80\xa8\"><Vertex x=\"0\" y=\"0\"/><Vertex x=\"10\" y=\"0\"/><Vertex "
        "x=\"10\" "
        "y=\"10\"/></Element></Context>");
    write(
        folder + "/tracks.jsonl",
        "{\"frame\":1,\"time\":\"2026-05-04T10:00:00\",\"actors\":[{\"id\":1,\"type\":\"PERSON\","
        "\"position\":[8,2,0]},{\"id\":2,\"type\":\"</"
        "script><!--\\u2028\\u0001\",\"position\":[1,1,"
        "0]}]}\n");
    const std::string parameters = folder + "/<!--<script>\".yaml";
    std::filesystem::copy(folder + "/params.yaml", parameters);
    const std::string page =
        pageOf("--params '" + parameters + "' --tracks " + folder + "/tracks.jsonl");

    std::string rest = page;
    for (const std::string id : {"report-data", "report-tracks", "report-why"}) {
        const std::string data = dataIn(page, id);
        EXPECT_EQ(
            data.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                   "0123456789+/="),
            std::string::npos);
        const std::string element =
            fmt::format("<script type=\"text/plain\" id=\"{}\">{}</script>\n", id, data);
        ASSERT_NE(rest.find(element), std::string::npos);
        rest.replace(rest.find(element), element.size(), "");
    }
    std::string empty(reportTemplate());
    empty.replace(empty.find(kReportDataPlace), kReportDataPlace.size(), "");
    // But for the data the page is what was built.
    EXPECT_TRUE(rest == empty);

    const DecodedReport report = decodeReport(page);
    const std::string shown =
        "</script><script>alert(1)</script><!-- \"'&\x01 \xe2\x80\xa8 \xef\xbf\xbd";
    EXPECT_EQ(report.data["models"][0]["alarmText"], shown);
    EXPECT_EQ(report.data["title"], "<!--<script>\"");
    EXPECT_EQ(report.data["scene"]["objects"][0]["name"], "</script><!-- \"' \xe2\x80\xa8");
    EXPECT_EQ(report.data["types"][1], "</script><!--\xe2\x80\xa8\x01");
    EXPECT_EQ(report.data["events"]["id"].size(), 1U);
}

TEST_F(ReportCommand, ReadsTracksFromStandardInput)
{
    const DecodedReport file = decodeReport(pageOf(kDoor));
    const DecodedReport input = decodeReport(
        pageOf("--params " + kFiles + "params.yaml --tracks -", "cat " + kFiles + "tracks.txt | "));
    EXPECT_EQ(input.data, file.data);
    EXPECT_EQ(input.tracks, file.tracks);
    EXPECT_EQ(input.why["events"], file.why["events"]);
    EXPECT_EQ(file.why["binWidth"], 1000);
    // How long they are is known only in the end.
    EXPECT_EQ(input.why["binWidth"], 60'000);
}

TEST_F(ReportCommand, ShowsTheEventsOfAFile)
{
    const std::string events = temporary("events.jsonl");
    const Outcome run = runProgram("run " + kDoor);
    const std::string foreign =
        R"({"id":90,"name":"Elsewhere","kind":"CompositeEvent","alarm_level":"HIGH","alarm":0,)"
        R"("text":"far","confidence":0.5,"begin":"2000-01-01T00:00:01.000","begin_frame":2,)"
        R"("end":"2000-01-01T00:00:02.000","end_frame":3,"duration":1.0,"objects":[{"variable":)"
        R"("p","type":"Person","id":1,"name":""}],"sub_events":[{"variable":"c1","id":0,"name":)"
        R"("InZone"}]})";
    write(events, run.out + foreign + "\n");
    const DecodedReport report = decodeReport(pageOf(kDoor + " --events " + events));
    const json& columns = report.data["events"];
    EXPECT_EQ(columns["id"], json({0, 1, 90}));
    EXPECT_EQ(columns["model"], json({0, 0, 1}));
    EXPECT_EQ(columns["subEvents"][2], json::parse("[0]"));
    EXPECT_EQ(columns["subEventIds"][2], json::parse("[0]"));
    EXPECT_EQ(report.data["models"][1]["name"], "Elsewhere");
    EXPECT_EQ(report.data["models"][1]["components"][0]["model"], 0);
    EXPECT_EQ(report.data["alarms"][columns["alarm"][2].get<std::size_t>()], "HIGH");
    EXPECT_EQ(report.why["events"][0]["id"], 0);
    EXPECT_EQ(report.why["events"][1]["id"], 1);
    EXPECT_TRUE(report.why["events"][2].is_null());
}

TEST_F(ReportCommand, ExplainsNoEventThatOnlyHasTheSameNumber)
{
    std::string line = runProgram("run " + kDoor).out;
    line.resize(line.find('\n') + 1);
    const std::string end = R"("end":"2000-01-01T00:00:03.000")";
    ASSERT_NE(line.find(end), std::string::npos);
    line.replace(line.find(end), end.size(), R"("end":"2000-01-01T00:00:04.000")");
    const std::string events = temporary("events.jsonl");
    write(events, line);
    const DecodedReport report = decodeReport(pageOf(kDoor + " --events " + events));
    EXPECT_EQ(report.data["events"]["end"], json({4000}));
    EXPECT_TRUE(report.why["events"][0].is_null());
}

TEST_F(ReportCommand, RefusesAFileThatHoldsNoEvents)
{
    const std::string output = " --output " + temporary("page.html");
    expectRefused(
        kDoor + output + " --events " + kFiles + "tracks.txt",
        3,
        "tracks.txt:1: the line is no JSON object");
    expectRefused(kDoor + output + " --events nowhere.jsonl", 3, "nowhere.jsonl: No such file");
}

TEST_F(ReportCommand, ShowsAPictureOfTheScene)
{
    const std::string picture = temporary("plan.png");
    write(picture, "\x89PNG\r\n\x1a\n...");
    const json data =
        decodeReport(
            pageOf(kDoor + " --background " + picture + " --background-placement -1,0,9.5,8"))
            .data;
    EXPECT_EQ(data["scene"]["background"]["placement"], json({-1.0, 0.0, 9.5, 8.0}));
    EXPECT_EQ(data["scene"]["background"]["image"], "data:image/png;base64,iVBORw0KGgouLi4=");
}

TEST_F(ReportCommand, ShowsPixelsAsPixels)
{
    const json data = decodeReport(pageOf(kDoor + " --pixels")).data;
    EXPECT_EQ(data["scene"]["unit"], "px");
    EXPECT_EQ(data["scene"]["down"], true);
}

TEST_F(ReportCommand, RefusesWhatIsNoPicture)
{
    const std::string output = " --output " + temporary("page.html");
    const std::string picture = " --background " + kFiles + "tracks.txt";
    expectRefused(
        kDoor + output + picture + " --background-placement 0,0,1,1",
        3,
        "tracks.txt: the picture is neither PNG nor JPEG");
    expectRefused(
        kDoor + output + picture + " --background-placement 1,1",
        2,
        "--background-placement needs X0,Y0,X1,Y1, the lower left and the upper right corner on "
        "the ground, not \"1,1\"");
    expectRefused(kDoor + output + picture, 2, "--background requires --background-placement");
    expectRefused(
        kDoor + output + " --background-placement 0,0,1,1",
        2,
        "--background-placement requires --background");
}

TEST_F(ReportCommand, OverwritesNothingThatIsRead)
{
    const std::string folder = temporary("files");
    std::filesystem::copy(kFiles, folder, std::filesystem::copy_options::recursive);
    const std::string input =
        "--params " + folder + "/params.yaml --tracks " + folder + "/tracks.txt --output ";
    for (const auto& [file, role] :
         {std::pair("tracks.txt", "--tracks"),
          {"params.yaml", "--params"},
          {"context.xml", "RHMContext"}}) {
        const std::string path = folder + "/" + file;
        const std::string before = contentOf(path);
        expectRefused(
            input + path,
            2,
            fmt::format("--output would overwrite {}, which is read as {}", path, role));
        EXPECT_EQ(contentOf(path), before);
    }
}

TEST_F(ReportCommand, LeavesAnEarlierPageWhereItFails)
{
    const std::string page = temporary("page.html");
    write(page, "earlier");
    const std::string tracks = temporary("tracks.txt");
    write(tracks, "nothing\n");
    expectRefused(
        "--params " + kFiles + "params.yaml --tracks-format jsonl --tracks " + tracks +
            " --output " + page,
        4,
        "there is no frame that can be used");
    EXPECT_EQ(contentOf(page), "earlier");
    EXPECT_FALSE(std::filesystem::exists(page + ".new"));
}

TEST_F(ReportCommand, EndsWithTheStatusOfWhatCannotBeUsed)
{
    const std::string output = " --output " + temporary("page.html");
    expectRefused("--params nowhere.yaml --tracks x" + output, 3, "nowhere.yaml");
    expectRefused("--params " + kFiles + "params.yaml --tracks nowhere" + output, 4, "nowhere");
    expectRefused(kDoor + output + " --set OperatorPluginPath=/nowhere", 5, "/nowhere");
    expectRefused(kDoor + " --output /nowhere/page.html", 6, "/nowhere/page.html: No such file");
    expectRefused(kDoor, 2, "--output is required");
    expectRefused("--params " + kFiles + "params.yaml" + output, 2, "--tracks is required");
}

TEST_F(ReportCommand, IsWrittenByRunAsWell)
{
    const std::string page = temporary("run.html");
    const Outcome plain = runProgram("run " + kDoor);
    const Outcome watched = runProgram("run " + kDoor + " --report " + page);
    EXPECT_EQ(watched.status, 0) << watched.talk;
    EXPECT_EQ(watched.out, plain.out);
    EXPECT_EQ(watched.talk, plain.talk);
    EXPECT_EQ(contentOf(page), pageOf(kDoor));
    // What is written frame by frame makes no difference to the page.
    const Outcome frames = runProgram("run " + kDoor + " --every-frame --report " + page);
    EXPECT_EQ(frames.out, runProgram("run " + kDoor + " --every-frame").out);
    EXPECT_EQ(contentOf(page), pageOf(kDoor));
}

TEST_F(ReportCommand, OfRunShowsThePicture)
{
    const std::string picture = temporary("plan.png");
    write(picture, "\x89PNG\r\n\x1a\n...");
    const std::string scene =
        " --pixels --background " + picture + " --background-placement 0,8,9,0";
    const std::string page = temporary("run.html");
    const Outcome run = runProgram("run " + kDoor + scene + " --report " + page);
    EXPECT_EQ(run.status, 0) << run.talk;
    EXPECT_EQ(contentOf(page), pageOf(kDoor + scene));
    const std::vector<std::tuple<std::string, int, std::string>> refused{
        {scene, 2, "requires --report"},
        {" --pixels", 2, "--pixels requires --report"},
        {" --report x.html --background " + picture, 2, "requires --background-placement"},
        {" --report x.html --background " + kFiles + "tracks.txt --background-placement 0,0,1,1",
         3,
         "neither PNG nor JPEG"},
        {scene + " --report " + picture, 2, "--report would overwrite " + picture}};
    for (const auto& [options, status, reason] : refused) {
        const Outcome outcome = runProgram(fmt::format("run {}{}", kDoor, options));
        EXPECT_EQ(outcome.status, status) << options;
        EXPECT_THAT(outcome.talk, HasSubstr(reason));
    }
}

TEST_F(ReportCommand, OfRunLeavesAnEarlierPageWhereItFails)
{
    const std::string tracks = temporary("tracks.txt");
    write(tracks, contentOf(kFiles + "tracks.txt") + "broken\n");
    const std::string input = "--params " + kFiles + "params.yaml --tracks " + tracks;
    for (const std::string command : {"run --report ", "report --output "}) {
        const std::string page = temporary("page.html");
        write(page, "earlier");
        const Outcome strict = runProgram(fmt::format("{}{} {} --strict", command, page, input));
        EXPECT_EQ(strict.status, 4) << strict.talk;
        EXPECT_EQ(contentOf(page), "earlier");
        const Outcome outcome = runProgram(fmt::format("{}{} {}", command, page, input));
        EXPECT_EQ(outcome.status, 0) << outcome.talk;
        EXPECT_NE(contentOf(page), "earlier");
    }
}

TEST_F(ReportCommand, NamesItsOwnOptionForTheFormat)
{
    const std::string tracks = temporary("tracks.odd");
    write(tracks, "what is this\n");
    expectRefused(
        "--params " + kFiles + "params.yaml --tracks " + tracks + " --output " +
            temporary("page.html"),
        2,
        "the format of the tracks is not known; name it with --tracks-format");
    const Outcome run = runProgram("run --params " + kFiles + "params.yaml --tracks " + tracks);
    EXPECT_THAT(run.talk, HasSubstr("name it with --format\n"));
}

TEST_F(ReportCommand, OfRunOverwritesNothing)
{
    const std::string events = temporary("events.jsonl");
    const Outcome clash =
        runProgram("run " + kDoor + " --events " + events + " --report " + events);
    EXPECT_EQ(clash.status, 2);
    EXPECT_THAT(clash.talk, HasSubstr("--events and --report would both write " + events));
    EXPECT_EQ(runProgram("run " + kDoor + " --report /nowhere/page.html").status, 6);
    EXPECT_EQ(runProgram("run " + kDoor + " --print-plan --report x.html").status, 2);
}

TEST(ReportCommandWithoutPage, SaysThatTheProgramWasBuiltWithout)
{
    const std::string reason =
        "this program writes no reports: it was built with SCENARIOMATCH_REPORT=OFF";
    const std::optional<RunFault> fault = faultOfReports("");
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->status, 2);
    EXPECT_EQ(fault->reason, reason);
    EXPECT_FALSE(faultOfReports("<html>"));
    if (reportTemplate().empty()) {
        expectRefused(kDoor + " --output " + temporary("page.html"), 2, reason);
        const Outcome run = runProgram("run " + kDoor + " --report " + temporary("page.html"));
        EXPECT_EQ(run.status, 2);
        EXPECT_THAT(run.talk, HasSubstr("scenariomatch run: " + reason));
    }
}

} // namespace scenariomatch
