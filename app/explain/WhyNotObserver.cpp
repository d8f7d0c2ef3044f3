#include "app/explain/WhyNotObserver.h"

#include <algorithm>
#include <utility>

namespace scenariomatch
{

// One model, and what becomes of its candidates.
struct WhyNotObserver::Watched
{
    const CSScenario* model = nullptr;
    std::size_t hidden = 0;
    // From the first frame on.
    std::optional<ModelWatch> watch;
    // In the time asked for, with the objects asked for.
    bool isRecognised = false;
};

WhyNotObserver::WhyNotObserver(const RecognitionView& view, WhyNotQuestion question)
    : m_models(view)
    , m_question(std::move(question))
    , m_filter(m_question.objects)
{
    const CSScenario* const model = m_models.find(m_question.model);
    if (model == nullptr) {
        return;
    }
    for (const ModelSet::Part& part : m_models.partsOf(*model)) {
        auto& watched = m_watched.emplace_back(std::make_unique<Watched>());
        watched->model = part.model;
        watched->hidden = part.hidden;
        m_events.watch(part.model->m_name);
    }
}

WhyNotObserver::~WhyNotObserver() = default;

// The engine has prepared the models only now.
void WhyNotObserver::start()
{
    m_isStarted = true;
    m_start = m_now;
    if (m_question.isFromStart) {
        m_question.window = m_question.window.after(m_start.milliseconds);
    }
    for (const auto& watched : m_watched) {
        watched->watch.emplace(
            *watched->model,
            WatchTerms{m_filter, m_events, m_question.lookBack, m_question.mostCandidates},
            watched->hidden);
    }
}

void WhyNotObserver::frameStarted(FrameView& view, const CSTimeStamp& now)
{
    m_now = momentOf(now);
    if (!m_isStarted) {
        start();
    }
    if (!m_question.window.contains(m_now.milliseconds)) {
        return;
    }
    m_first = m_first.value_or(m_now);
    m_last = m_now;
    ++m_frames;
    noteSeen(view);
    for (const auto& watched : m_watched) {
        // Of a part that was recognised nobody asks why it was not.
        const bool isAsked = watched == m_watched.front() || !watched->isRecognised;
        if (isAsked) {
            watched->watch->addFrame(view, now);
        }
    }
}

void WhyNotObserver::noteSeen(FrameView& view)
{
    for (std::size_t i = 0; m_seen.size() < m_filter.objects().size() && i < view.size(); ++i) {
        const std::int32_t asked =
            m_filter.indexOf(*view.agent(static_cast<FrameView::AgentIndex>(i)));
        if (asked >= 0) {
            m_seen.insert(m_filter.objects()[static_cast<std::size_t>(asked)]);
        }
    }
}

WhyNotObserver::Watched*
WhyNotObserver::watched(const CSScenario& model, const CConstraint::Bindings& bindings)
{
    const auto found = std::find_if(
        m_watched.begin(), m_watched.end(), [&](const auto& one) { return one->model == &model; });
    if (found == m_watched.end() || !m_question.window.contains(m_now.milliseconds)) {
        return nullptr;
    }
    const bool isAsked =
        m_filter.isEmpty() || m_filter.missing(participantsOf(bindings)) <= (*found)->hidden;
    return isAsked ? found->get() : nullptr;
}

void WhyNotObserver::candidateTested(const CSScenario& model, const CConstraint::Bindings& bindings)
{
    if (model.m_kind == "PrimitiveState") {
        return;
    }
    Watched* const here = watched(model, bindings);
    if (here != nullptr) {
        here->watch->candidateTested();
    }
}

void WhyNotObserver::constraintFalse(
    const CSScenario& model, const CConstraint::Bindings& bindings, std::size_t constraint)
{
    Watched* const here = watched(model, bindings);
    if (here != nullptr) {
        here->watch->constraintFalse(bindings, constraint, m_now);
    }
}

void WhyNotObserver::notConfident(
    const CSScenario& model, const CConstraint::Bindings& bindings, double confidence)
{
    Watched* const here = watched(model, bindings);
    if (here != nullptr) {
        here->watch->notConfident(bindings, confidence, m_now);
    }
}

void WhyNotObserver::instanceNew(const CSScenarioInstance& instance)
{
    m_events.add(instance);
    noteRecognised(instance);
}

void WhyNotObserver::instanceExtended(const CSScenarioInstance& instance)
{
    m_events.extend(instance);
    noteRecognised(instance);
}

void WhyNotObserver::noteRecognised(const CSScenarioInstance& instance)
{
    Watched* const here = watched(*instance.m_scenario, instance.m_bindings);
    if (here == nullptr) {
        return;
    }
    here->isRecognised = true;
    here->watch->recognised(instance.m_bindings);
}

WhyNot WhyNotObserver::answer()
{
    for (const auto& watched : m_watched) {
        if (watched->watch) {
            watched->watch->finish(m_question.window.from, m_question.window.to);
        }
    }
    return m_watched.empty() ? WhyNot() : answerFor(*m_watched.front());
}

WhyNot WhyNotObserver::answerFor(const Watched& watched)
{
    WhyNot why = watched.watch ? watched.watch->answer() : WhyNot();
    why.model = watched.model->m_name;
    why.kind = watched.model->m_kind;
    why.start = m_start;
    why.first = m_first.value_or(m_start);
    why.last = m_first ? m_last : m_start;
    why.frames = m_frames;
    why.objects = m_question.objects;
    std::copy_if(
        m_question.objects.begin(),
        m_question.objects.end(),
        std::back_inserter(why.unseenObjects),
        [this](const std::string& object) { return !m_seen.contains(object); });
    if (watched.watch && !watched.watch->isPrimitive()) {
        addComponents(watched, why);
    }
    addEvents(watched, why);
    return why;
}

const WhyNotObserver::Watched* WhyNotObserver::find(const std::string& model) const
{
    const auto found = std::find_if(m_watched.begin(), m_watched.end(), [&](const auto& one) {
        return one->model->m_name == model;
    });
    return found == m_watched.end() ? nullptr : found->get();
}

// Those recognised in the window, with objects that are asked for.
std::vector<std::shared_ptr<const KnownEvent>>
WhyNotObserver::eventsOf(const Watched& watched, const TimeWindow& window) const
{
    std::vector<std::shared_ptr<const KnownEvent>> events;
    for (const auto& event : m_events.of(watched.model->m_name)) {
        const bool isInTime =
            std::any_of(event->times.begin(), event->times.end(), [&window](const auto& time) {
                return window.contains(momentOf(*time).milliseconds);
            });
        if (isInTime && m_filter.missing(event->objects) <= watched.hidden) {
            events.push_back(event);
        }
    }
    return events;
}

void WhyNotObserver::addEvents(const Watched& watched, WhyNot& why) const
{
    for (const auto& event : eventsOf(watched, m_question.window)) {
        why.events.push_back(
            {event->id, momentOf(*event->start), momentOf(event->end()), event->objects});
    }
}

// Once for each model, however often it is a component.
std::shared_ptr<const WhyNot> WhyNotObserver::whyMissing(const Watched& watched)
{
    std::shared_ptr<const WhyNot>& missing = m_missing[watched.model->m_name];
    if (!missing) {
        missing = std::make_shared<const WhyNot>(answerFor(watched));
    }
    return missing;
}

// What was recognised before the time asked for may still be looked back at.
void WhyNotObserver::addComponents(const Watched& watched, WhyNot& why)
{
    constexpr double kMilliseconds = 1000.0;
    TimeWindow window = m_question.window;
    if (window.from > m_start.milliseconds) {
        window.from -= static_cast<std::int64_t>(m_question.lookBack * kMilliseconds);
    }
    bool isAnyMissing = false;
    for (const auto& component : watched.model->m_components) {
        ComponentOutcome outcome{
            component->m_variable, component->m_modelName, component->m_arguments, 0, nullptr};
        const Watched* const part = find(component->m_modelName);
        outcome.events = part == nullptr ? 0 : eventsOf(*part, window).size();
        if (part != nullptr && outcome.events == 0) {
            outcome.missing = whyMissing(*part);
        }
        isAnyMissing = isAnyMissing || outcome.events == 0;
        why.components.push_back(std::move(outcome));
    }
    if (why.candidates == 0 && !isAnyMissing) {
        why.apart =
            apartText(*watched.model, m_models, m_events, m_question.lookBack, m_question.window);
    }
}

} // namespace scenariomatch
