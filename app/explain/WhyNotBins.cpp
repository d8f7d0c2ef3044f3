#include "app/explain/WhyNotBins.h"

#include "scenario/CSScenario.h"

#include <algorithm>

namespace scenariomatch
{

WhyNotBins::WhyNotBins(const RecognitionView& view, const Terms& terms)
    : m_terms(terms)
{
    view.visitModels([this](const CSScenario& model) {
        m_byModel.emplace(&model, m_watched.size());
        m_watched.push_back({&model, {}, {}});
        for (const auto& component : model.m_components) {
            m_events.watch(component->m_modelName);
        }
    });
}

void WhyNotBins::frameStarted(FrameView& view, const CSTimeStamp& now)
{
    m_now = momentOf(now);
    m_start = m_start.value_or(m_now);
    const auto place = static_cast<std::size_t>(
        std::max<std::int64_t>(m_now.milliseconds - m_start->milliseconds, 0) / m_terms.width);
    const std::size_t bin = std::min(place, m_terms.mostBins - 1);
    if (bin >= m_frames.size()) {
        startBin(bin);
    }
    ++m_frames.back();
    for (Watched& watched : m_watched) {
        watched.watches.back()->addFrame(view, now);
    }
}

// The engine has prepared the models only when the first frame comes.
void WhyNotBins::startBin(std::size_t bin)
{
    endBin();
    m_frames.resize(bin + 1);
    for (Watched& watched : m_watched) {
        watched.answers.resize(bin + 1);
        watched.watches.resize(bin + 1);
        watched.watches.back().emplace(
            *watched.model,
            WatchTerms{m_anybody, m_events, m_terms.lookBack, m_terms.mostCandidates});
    }
}

void WhyNotBins::endBin()
{
    for (Watched& watched : m_watched) {
        if (!watched.watches.empty() && watched.watches.back()->isPrimitive()) {
            watched.answers.back() = watched.watches.back()->answer();
            watched.watches.back().reset();
        }
    }
}

// Null before the first frame.
ModelWatch* WhyNotBins::watch(const CSScenario& model)
{
    const auto found = m_byModel.find(&model);
    if (found == m_byModel.end() || m_frames.empty()) {
        return nullptr;
    }
    return &*m_watched[found->second].watches.back();
}

void WhyNotBins::candidateTested(const CSScenario& model, const CConstraint::Bindings& /*bindings*/)
{
    if (ModelWatch* const here = watch(model); here != nullptr) {
        here->candidateTested();
    }
}

void WhyNotBins::constraintFalse(
    const CSScenario& model, const CConstraint::Bindings& bindings, std::size_t constraint)
{
    if (ModelWatch* const here = watch(model); here != nullptr) {
        here->constraintFalse(bindings, constraint, m_now);
    }
}

void WhyNotBins::notConfident(
    const CSScenario& model, const CConstraint::Bindings& bindings, double confidence)
{
    if (ModelWatch* const here = watch(model); here != nullptr) {
        here->notConfident(bindings, confidence, m_now);
    }
}

void WhyNotBins::instanceNew(const CSScenarioInstance& instance)
{
    m_events.add(instance);
    if (ModelWatch* const here = watch(*instance.m_scenario); here != nullptr) {
        here->recognised(instance.m_bindings);
    }
}

void WhyNotBins::instanceExtended(const CSScenarioInstance& instance)
{
    m_events.extend(instance);
    if (ModelWatch* const here = watch(*instance.m_scenario); here != nullptr) {
        here->recognised(instance.m_bindings);
    }
}

std::vector<WhyNotBins::Bins> WhyNotBins::answers()
{
    endBin();
    std::vector<Bins> all;
    for (Watched& watched : m_watched) {
        for (std::size_t bin = 0; bin < m_frames.size(); ++bin) {
            std::optional<WhyNot>& answer = watched.answers[bin];
            if (std::optional<ModelWatch>& open = watched.watches[bin]) {
                const std::int64_t from =
                    m_start->milliseconds + static_cast<std::int64_t>(bin) * m_terms.width;
                const bool isLast = bin + 1 == m_terms.mostBins;
                open->finish(from, isLast ? INT64_MAX : from + m_terms.width - 1);
                answer = open->answer();
            }
            if (answer) {
                answer->start = *m_start;
                answer->frames = m_frames[bin];
            }
        }
        all.push_back(std::move(watched.answers));
    }
    return all;
}

} // namespace scenariomatch
