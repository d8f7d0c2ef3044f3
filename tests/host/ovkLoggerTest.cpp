#include "host/ovkLogger.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{

using Messages = std::vector<std::pair<int, std::string>>;

class RecordingEngine : public ovkLogEngine
{
public:
    explicit RecordingEngine(Messages& messages)
        : m_messages(messages)
    {
    }

    void write(int level, const std::string& message) override
    {
        m_messages.emplace_back(level, message);
    }

private:
    Messages& m_messages;
};

class OvkLogger : public testing::Test
{
protected:
    void TearDown() override
    {
        m_logger.setEngine(nullptr);
        m_logger.setLevel(m_level);
    }

    ovkLogger& m_logger = *ovkLogger::instance();
    int m_level = m_logger.level();
};

} // namespace

TEST_F(OvkLogger, AdmitsErrorsAtFirst)
{
    EXPECT_EQ(ovkLogger::kErrorLevel, 17);
    EXPECT_TRUE(m_logger.admits(ovkLogger::kErrorLevel));
}

TEST_F(OvkLogger, AdmitsErrorsBelowEighteen)
{
    m_logger.setLevel(17);
    EXPECT_TRUE(m_logger.admits(ovkLogger::kErrorLevel));
    m_logger.setLevel(18);
    EXPECT_FALSE(m_logger.admits(ovkLogger::kErrorLevel));
}

TEST_F(OvkLogger, WritesLinesToStandardErrorByDefault)
{
    testing::internal::CaptureStderr();
    m_logger.log(ovkLogger::kErrorLevel, "the disk is full");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "the disk is full\n");
}

TEST_F(OvkLogger, DropsWhatItsLevelDoesNotAdmit)
{
    Messages messages;
    m_logger.setEngine(std::make_unique<RecordingEngine>(messages));
    m_logger.setLevel(18);
    m_logger.log(17, "dropped");
    m_logger.log(18, "written");
    EXPECT_EQ(messages, (Messages{{18, "written"}}));
}

TEST_F(OvkLogger, ReturnsToStandardErrorWithoutAnEngine)
{
    Messages messages;
    m_logger.setEngine(std::make_unique<RecordingEngine>(messages));
    m_logger.setEngine(nullptr);
    testing::internal::CaptureStderr();
    m_logger.log(ovkLogger::kErrorLevel, "back");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "back\n");
    EXPECT_TRUE(messages.empty());
}
