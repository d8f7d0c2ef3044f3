#include "app/explain/ModelWatch.h"

namespace scenariomatch
{

ModelWatch::ModelWatch(const CSScenario& model, const WatchTerms& terms, std::size_t hidden)
    : m_model(model)
    , m_untold(model.m_constraints.size())
{
    if (model.m_kind == "PrimitiveState") {
        m_primitive =
            std::make_unique<PrimitiveSearch>(model, terms.filter, hidden, terms.mostCandidates);
    } else {
        m_composite = std::make_unique<CompositeSearch>(model, terms.events, terms.lookBack);
    }
}

void ModelWatch::addFrame(FrameView& view, const CSTimeStamp& now)
{
    if (m_primitive) {
        m_primitive->addFrame(view, now);
    }
}

void ModelWatch::candidateTested()
{
    if (m_composite) {
        m_composite->candidateTested();
    }
}

void ModelWatch::constraintFalse(
    const CConstraint::Bindings& bindings, std::size_t constraint, const Moment& now)
{
    if (m_composite) {
        m_composite->constraintFalse(bindings, constraint, now);
    } else if (constraint >= m_primitive->tested()) {
        ++m_untold[constraint];
    }
}

void ModelWatch::notConfident(
    const CConstraint::Bindings& bindings, double confidence, const Moment& now)
{
    const bool isNearest = !m_confidence || confidence > m_confidence->confidence;
    if (!m_confidence) {
        m_confidence.emplace();
        m_confidence->threshold = m_model.m_confidenceThreshold;
    }
    ++m_confidence->times;
    if (isNearest) {
        m_confidence->confidence = confidence;
        m_confidence->nearest = {now, participantsOf(bindings), {}};
    }
}

void ModelWatch::recognised(const CConstraint::Bindings& bindings)
{
    if (m_composite) {
        m_composite->recognised(bindings);
    }
}

void ModelWatch::finish(std::int64_t fromMilliseconds, std::int64_t toMilliseconds)
{
    if (m_composite) {
        m_composite->finish(fromMilliseconds, toMilliseconds);
    }
}

WhyNot ModelWatch::answer() const
{
    WhyNot why;
    why.model = m_model.m_name;
    why.kind = m_model.m_kind;
    why.confidence = m_confidence;
    if (m_primitive) {
        why.candidates = m_primitive->candidates();
        why.cutFrames = m_primitive->cutFrames();
        why.constraints = m_primitive->outcomes();
        why.nearest = m_primitive->nearest();
        why.nearestRank = m_primitive->nearestRank();
        why.unseenTypes = m_primitive->absentTypes();
        for (std::size_t i = 0; i < m_untold.size(); ++i) {
            why.constraints[i].firstFalse += m_untold[i];
        }
    } else {
        why.candidates = m_composite->candidates();
        why.constraints = m_composite->outcomes();
        why.nearest = m_composite->nearest();
        why.nearestRank = m_composite->nearestRank();
    }
    return why;
}

} // namespace scenariomatch
