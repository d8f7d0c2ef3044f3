#include "host/ovkAbstractProcessFactory.h"
#include "host/ovkLogger.h"
#include "host/ovkPlugin.h"
#include "host/rhmAbstractProcessEventRecognition.h"
#include "plugin/RecognitionView.h"

#include <QPluginLoader>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const QString kType = QStringLiteral("ScenarioMatchProcess");

class LogRecorder : public ovkLogEngine
{
public:
    explicit LogRecorder(std::vector<std::string>& messages)
        : m_messages(messages)
    {
    }

    void write(int level, const std::string& message) override
    {
        m_messages.push_back(std::to_string(level) + " " + message);
    }

private:
    std::vector<std::string>& m_messages;
};

class OtherProcess : public ovkAbstractProcess
{
public:
    QString identifier() const override { return QStringLiteral("OtherProcess"); }
};

// Works on the plug-in as it is built, through the platform's interfaces alone.
class ScenarioMatchProcessPlugin : public testing::Test
{
protected:
    void SetUp() override
    {
        QPluginLoader loader(
            QStringLiteral(SCENARIOMATCH_BUILD_LIB "/scenariomatch/scenariomatch_process.so"));
        m_plugin = qobject_cast<ovkPlugin*>(loader.instance());
        ASSERT_NE(m_plugin, nullptr) << loader.errorString().toStdString();
        m_plugin->initialize();
        ovkLogger::instance()->setEngine(std::make_unique<LogRecorder>(m_log));
    }

    void TearDown() override
    {
        ovkLogger::instance()->setEngine(nullptr);
        ovkLogger::instance()->setLevel(m_level);
    }

    static std::unique_ptr<ovkAbstractProcess> create()
    {
        return ovkAbstractProcessFactory::instance()->create(kType);
    }

    std::vector<std::string> m_log;
    int m_level = ovkLogger::instance()->level();
    ovkPlugin* m_plugin = nullptr;
};

} // namespace

TEST_F(ScenarioMatchProcessPlugin, DescribesItself)
{
    EXPECT_EQ(m_plugin->name(), QStringLiteral("ScenarioMatchProcessPlugin"));
    EXPECT_EQ(m_plugin->description(), QString());
    EXPECT_TRUE(m_plugin->tags().isEmpty());
    EXPECT_EQ(m_plugin->types(), QStringList{kType});
    EXPECT_TRUE(m_plugin->uninitialize());
}

TEST_F(ScenarioMatchProcessPlugin, RegistersTheProcessType)
{
    EXPECT_TRUE(ovkAbstractProcessFactory::instance()->types().contains(kType));
    EXPECT_EQ(
        ovkAbstractProcessFactory::instance()->interfaceName(kType),
        QStringLiteral("rhmAbstractProcessEventRecognition"));
    const auto process = create();
    ASSERT_NE(process, nullptr);
    EXPECT_EQ(process->identifier(), kType);
}

TEST_F(ScenarioMatchProcessPlugin, LogsARefusedRegistrationAndReturnsTrue)
{
    EXPECT_TRUE(m_plugin->initialize());
    EXPECT_THAT(m_log, ElementsAre("17 Unable to register ScenarioMatchProcess type"));
    ovkLogger::instance()->setLevel(18);
    EXPECT_TRUE(m_plugin->initialize());
    EXPECT_EQ(m_log.size(), 1U);
}

TEST_F(ScenarioMatchProcessPlugin, CopiesFromItsOwnKindInSilence)
{
    const auto source = create();
    const auto target = create();
    source->setParameter("historySize", "3");
    auto& recogniser = dynamic_cast<rhmAbstractProcessEventRecognition&>(*source);
    recogniser.setParameterFile("lobby.yml");
    target->copy(*source);
    target->copy(*target);
    EXPECT_THAT(m_log, IsEmpty());
    EXPECT_EQ(
        dynamic_cast<rhmAbstractProcessEventRecognition&>(*target).getParameterFile(), "lobby.yml");
    EXPECT_EQ(target->parameter("historySize"), "10");
}

TEST_F(ScenarioMatchProcessPlugin, LogsACopyFromAnotherKind)
{
    const OtherProcess other;
    const auto process = create();
    process->copy(other);
    EXPECT_THAT(
        m_log, ElementsAre("17 Copy can't be done at the rhmAbstractProcessAcquisitor level."));
    ovkLogger::instance()->setLevel(18);
    process->copy(other);
    EXPECT_EQ(m_log.size(), 1U);
}

TEST_F(ScenarioMatchProcessPlugin, RunsThroughThePlatformsInterfaces)
{
    const auto process = create();
    auto* recogniser = dynamic_cast<rhmAbstractProcessEventRecognition*>(process.get());
    ASSERT_NE(recogniser, nullptr);
    auto* view = dynamic_cast<scenariomatch::RecognitionView*>(process.get());
    ASSERT_NE(view, nullptr);
    testing::internal::CaptureStdout();
    EXPECT_TRUE(recogniser->init());
    EXPECT_TRUE(recogniser->performEventRecognition());
    testing::internal::GetCapturedStdout();
    EXPECT_TRUE(recogniser->getCurrentFrameEvents().isEmpty());
    EXPECT_EQ(view->counters().liveInstances, 0U);
}
