#include "app/YamlDocument.h"

#include <sstream>
#include <vector>
#include <yaml-cpp/eventhandler.h>

namespace scenariomatch
{

namespace
{

// Notes where documents begin.
class DocumentStarts : public YAML::EventHandler
{
public:
    const std::vector<YAML::Mark>& marks() const { return m_marks; }

    void OnDocumentStart(const YAML::Mark& mark) override { m_marks.push_back(mark); }

    void OnDocumentEnd() override {}

    void OnNull(const YAML::Mark& /*mark*/, YAML::anchor_t /*anchor*/) override {}

    void OnAlias(const YAML::Mark& /*mark*/, YAML::anchor_t /*anchor*/) override {}

    void OnScalar(
        const YAML::Mark& /*mark*/,
        const std::string& /*tag*/,
        YAML::anchor_t /*anchor*/,
        const std::string& /*value*/) override
    {
    }

    void OnSequenceStart(
        const YAML::Mark& /*mark*/,
        const std::string& /*tag*/,
        YAML::anchor_t /*anchor*/,
        YAML::EmitterStyle::value /*style*/) override
    {
    }

    void OnSequenceEnd() override {}

    void OnMapStart(
        const YAML::Mark& /*mark*/,
        const std::string& /*tag*/,
        YAML::anchor_t /*anchor*/,
        YAML::EmitterStyle::value /*style*/) override
    {
    }

    void OnMapEnd() override {}

private:
    std::vector<YAML::Mark> m_marks;
};

} // namespace

YamlDocument readYamlDocument(const std::string& text)
{
    std::istringstream stream(text);
    YAML::Parser parser(stream);
    DocumentStarts starts;
    const bool hasOne = parser.HandleNextDocument(starts);
    if (!hasOne) {
        return {};
    }
    YamlDocument document{YAML::Load(text), std::nullopt};
    if (parser.HandleNextDocument(starts)) {
        const YAML::Mark& next = starts.marks().back();
        if (next.pos == starts.marks().front().pos) {
            throw YAML::ParserException(next, "what stands here is no YAML");
        }
        document.next = next;
    }
    return document;
}

} // namespace scenariomatch
