#include "app/explain/Summary.h"

#include "app/explain/NumberWords.h"
#include "app/explain/ObjectFilter.h"

#include <algorithm>
#include <cctype>
#include <fmt/format.h>
#include <utility>

namespace scenariomatch
{

namespace
{

std::string joined(const std::vector<std::string>& words, const char* last)
{
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool isLast = i + 1 == words.size();
        text += i == 0 ? "" : isLast ? fmt::format(" {} ", last) : ", ";
        text += words[i];
    }
    return text;
}

std::string counted(std::uint64_t count, const char* one, const char* many)
{
    return fmt::format("{} {}", count, count == 1 ? one : many);
}

std::string withObjects(const WhyNot& why)
{
    return why.objects.empty() ? "" : " with " + joined(why.objects, "and");
}

std::string windowText(const WhyNot& why)
{
    return fmt::format(
        "from {} to {}", secondsText(why.first, why.start), secondsText(why.last, why.start));
}

std::string headSentence(const WhyNot& why)
{
    if (why.frames == 0) {
        return fmt::format("{} was not tried: no frame lies in the time asked for.", why.model);
    }
    if (why.events.empty()) {
        return fmt::format(
            "{}{} was not recognised {}.", why.model, withObjects(why), windowText(why));
    }
    return fmt::format(
        "{}{} was recognised {}, {}.",
        why.model,
        withObjects(why),
        windowText(why),
        counted(why.events.size(), "event", "events"));
}

std::vector<std::string> unseenSentences(const WhyNot& why)
{
    std::vector<std::string> sentences;
    for (const std::string& object : why.unseenObjects) {
        sentences.push_back(fmt::format("Object {} was not seen.", object));
    }
    for (const std::string& type : why.unseenTypes) {
        sentences.push_back(fmt::format("No object of type {} was seen.", type));
    }
    return sentences;
}

// Whether something is known of who came nearest: some constraint held, or it is a matter of more
// and less.
bool isNear(const WhyNot& why)
{
    if (!why.nearest) {
        return false;
    }
    const std::vector<Finding>& findings = why.nearest->findings;
    return findings.size() < why.constraints.size() ||
           std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
               return finding.isMeasured;
           });
}

std::string nearestClause(const WhyNot& why)
{
    const std::string objects = objectsText(why.nearest->objects);
    return fmt::format(
        "{} came nearest{} at {}",
        why.model,
        objects.empty() ? "" : " with " + objects,
        secondsText(why.nearest->when, why.start));
}

// The nearest of all; where it is not known, the nearest to the constraint that failed first most.
std::vector<std::string> nearestSentences(const WhyNot& why)
{
    if (isNear(why)) {
        const NearMiss& nearest = *why.nearest;
        const std::size_t failing = nearest.findings.size();
        std::vector<std::string> sentences{fmt::format(
            "{}: {} of {} constraints {} false.",
            nearestClause(why),
            failing,
            why.constraints.size(),
            failing == 1 ? "was" : "were")};
        for (const Finding& finding : nearest.findings) {
            sentences.push_back(findingText(finding) + ".");
        }
        if (nearest.isHindsight) {
            sentences.emplace_back(
                "Sub-events that were still going on then are taken as they were in the end.");
        }
        return sentences;
    }
    const ConstraintOutcome* most = nullptr;
    for (const ConstraintOutcome& outcome : why.constraints) {
        if (outcome.firstFalse > (most == nullptr ? 0 : most->firstFalse)) {
            most = &outcome;
        }
    }
    if (most == nullptr) {
        return {};
    }
    std::vector<std::string> sentences{fmt::format(
        "{} was the first to be false for {}.",
        most->text,
        counted(most->firstFalse, "candidate", "candidates"))};
    if (!most->isPure) {
        sentences.emplace_back("Its operator promises nothing, so its values are not known.");
    }
    return sentences;
}

std::vector<std::string> confidenceSentences(const WhyNot& why)
{
    if (!why.confidence) {
        return {};
    }
    const ConfidenceMiss& miss = *why.confidence;
    return {fmt::format(
        "{} met all constraints and {} not confident enough: {} at best ({} at {}), {} needed, {} "
        "short.",
        counted(miss.times, "candidate", "candidates"),
        miss.times == 1 ? "was" : "were",
        numberText(miss.confidence),
        objectsText(miss.nearest.objects),
        secondsText(miss.nearest.when, why.start),
        numberText(miss.threshold),
        numberText(miss.threshold - miss.confidence))};
}

// Says nothing twice.
void append(std::vector<std::string>& sentences, std::vector<std::string> more)
{
    for (std::string& sentence : more) {
        if (std::find(sentences.begin(), sentences.end(), sentence) == sentences.end()) {
            sentences.push_back(std::move(sentence));
        }
    }
}

std::vector<std::string> reasonsOf(const WhyNot& why);

std::vector<std::string> componentSentences(const WhyNot& why)
{
    std::vector<std::string> sentences;
    for (const ComponentOutcome& component : why.components) {
        if (component.events > 0) {
            continue;
        }
        sentences.push_back(fmt::format(
            "{} needs {} ({}), which was never recognised.",
            why.model,
            component.variable,
            component.model));
        if (component.missing) {
            append(sentences, reasonsOf(*component.missing));
        }
    }
    if (!why.apart.empty()) {
        sentences.push_back(fmt::format(
            "The components of {} were recognised, but never together: {}.", why.model, why.apart));
    }
    return sentences;
}

// Why there was no event.
std::vector<std::string> reasonsOf(const WhyNot& why)
{
    std::vector<std::string> sentences = unseenSentences(why);
    append(sentences, componentSentences(why));
    append(sentences, confidenceSentences(why));
    append(sentences, nearestSentences(why));
    if (sentences.empty() && why.frames > 0 && why.candidates == 0) {
        sentences.emplace_back("There was no candidate.");
    }
    return sentences;
}

// A sentence that follows a colon; names of models keep their letters.
std::string asClause(std::string sentence, const WhyNot& why)
{
    if (!sentence.starts_with(why.model) && !sentence.empty()) {
        sentence.front() =
            static_cast<char>(std::tolower(static_cast<unsigned char>(sentence.front())));
    }
    return sentence;
}

// Down to what was missing in the first place: "A needs c1 (B), which needs c2 (C), which was never
// recognised: ...".
std::string missingReason(const WhyNot& why, const ComponentOutcome& missing)
{
    std::string chain = fmt::format("{} needs {} ({})", why.model, missing.variable, missing.model);
    const WhyNot* part = missing.missing.get();
    const auto next = [&part] {
        return std::find_if(
            part->components.begin(), part->components.end(), [](const ComponentOutcome& one) {
                return one.missing != nullptr;
            });
    };
    for (auto found = next(); found != part->components.end(); found = next()) {
        chain += fmt::format(", which needs {} ({})", found->variable, found->model);
        part = found->missing.get();
    }
    return fmt::format(
        "{}, which was never recognised: {}", chain, asClause(reasonOf(*part), *part));
}

} // namespace

std::string secondsText(const Moment& moment, const Moment& start)
{
    constexpr double kMilliseconds = 1000.0;
    return fmt::format(
        "{} s", static_cast<double>(moment.milliseconds - start.milliseconds) / kMilliseconds);
}

std::string objectsText(const std::vector<EventObject>& objects)
{
    std::string text;
    for (const EventObject& object : objects) {
        text +=
            fmt::format("{}{}={}", text.empty() ? "" : " ", object.variable, objectName(object));
    }
    return text;
}

std::string findingText(const Finding& finding)
{
    std::string text = finding.text;
    if (!finding.seen.empty()) {
        text += ": " + finding.seen;
        text += finding.required.empty() ? "" : ", needed " + finding.required;
    }
    if (!finding.note.empty()) {
        text += (finding.seen.empty() ? ": " : ", ") + finding.note;
    }
    return text;
}

std::vector<std::string> summaryOf(const WhyNot& why)
{
    std::vector<std::string> sentences{headSentence(why)};
    if (!why.events.empty() || why.frames == 0) {
        return sentences;
    }
    if (why.candidates > 0) {
        sentences.push_back(
            counted(why.candidates, "candidate was tried.", "candidates were tried."));
    }
    if (why.cutFrames > 0) {
        sentences.push_back(fmt::format(
            "In {} there were too many candidates to try all.",
            counted(why.cutFrames, "frame", "frames")));
    }
    append(sentences, reasonsOf(why));
    return sentences;
}

std::string reasonOf(const WhyNot& why)
{
    if (why.frames == 0 || !why.events.empty()) {
        return headSentence(why);
    }
    const bool isSeen = why.unseenObjects.empty() && why.unseenTypes.empty();
    const auto missing = std::find_if(
        why.components.begin(), why.components.end(), [](const ComponentOutcome& component) {
            return component.missing != nullptr;
        });
    if (isSeen && missing != why.components.end()) {
        return missingReason(why, *missing);
    }
    if (isNear(why) && isSeen && !why.confidence) {
        std::vector<std::string> texts;
        for (const Finding& finding : why.nearest->findings) {
            texts.push_back(findingText(finding));
        }
        return fmt::format("{}: {}.", nearestClause(why), fmt::join(texts, "; "));
    }
    const std::vector<std::string> reasons = reasonsOf(why);
    return reasons.empty() ? headSentence(why) : reasons.front();
}

std::vector<std::string> summaryOf(const Evidence& evidence)
{
    return {fmt::format(
        "{} (event {}) was recognised with {} from {} to {}, for the first time at {}.",
        evidence.model,
        evidence.id,
        objectsText(evidence.objects),
        secondsText(evidence.begin, evidence.start),
        secondsText(evidence.end, evidence.start),
        secondsText(evidence.recognised, evidence.start))};
}

} // namespace scenariomatch
