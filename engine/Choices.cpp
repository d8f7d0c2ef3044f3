#include "engine/Choices.h"

namespace scenariomatch
{

Choices::Number Choices::numberOf(const std::string& question)
{
    const auto [entry, isNew] = m_numbers.try_emplace(question, m_answers.size());
    if (isNew) {
        m_answers.emplace_back();
    }
    return {entry->second, isNew};
}

Choices::Answer& Choices::about(std::size_t number, const FrameView& view)
{
    return about(number, -1, view);
}

// Makes room for all objects at once: answers that are in use stay where they are.
Choices::Answer&
Choices::about(std::size_t number, std::int32_t constantNumber, const FrameView& view)
{
    std::vector<Answer>& answers = m_answers[number];
    if (answers.size() <= view.constants()) {
        answers.resize(view.constants() + 1);
    }
    return answers[static_cast<std::size_t>(std::int64_t{constantNumber} + 1)];
}

} // namespace scenariomatch
