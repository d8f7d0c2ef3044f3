#include "engine/QuietLoading.h"

#include <QLoggingCategory>
#include <QString>
#include <QtGlobal>

#include <gmock/gmock.h>

#include <atomic>
#include <optional>
#include <string>
#include <thread>

namespace scenariomatch
{

namespace
{

std::string logged;
std::atomic<int> messages = 0;

void log(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    ++messages;
    logged += text.toStdString() + '\n';
}

void count(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/)
{
    ++messages;
}

QtMessageHandler handlerBefore = nullptr;

void logAndPassOn(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    logged += "seen: " + text.toStdString() + '\n';
    handlerBefore(type, context, text);
}

void warnAsTheLoaderDoes(const char* text)
{
    const QLoggingCategory category("qt.core.plugin.loader");
    qCWarning(category, "%s", text);
}

// Has the test's handler in place, and afterwards the one from before.
class QuietLoadingTest : public testing::Test
{
protected:
    void SetUp() override
    {
        logged.clear();
        messages = 0;
        m_before = qInstallMessageHandler(log);
    }

    void TearDown() override { qInstallMessageHandler(m_before); }

private:
    QtMessageHandler m_before = nullptr;
};

} // namespace

TEST_F(QuietLoadingTest, DropsTheWarningsOfTheLoaderAlone)
{
    {
        const QuietLoading quiet;
        warnAsTheLoaderDoes("dropped");
        qWarning("kept");
    }
    warnAsTheLoaderDoes("over");
    EXPECT_EQ(logged, "kept\nover\n");
    EXPECT_EQ(qInstallMessageHandler(log), static_cast<QtMessageHandler>(log));
}

TEST_F(QuietLoadingTest, StaysQuietUntilTheLastOfSeveralIsDone)
{
    std::optional<QuietLoading> first(std::in_place);
    std::optional<QuietLoading> second(std::in_place);
    first.reset();
    warnAsTheLoaderDoes("dropped");
    qWarning("kept");
    second.reset();
    warnAsTheLoaderDoes("over");
    EXPECT_EQ(logged, "kept\nover\n");
}

TEST_F(QuietLoadingTest, LosesNothingThatAnotherThreadLogsMeanwhile)
{
    constexpr int kRounds = 5000;
    std::atomic<int> rounds = 0;
    qInstallMessageHandler(count);
    const std::jthread loader([&rounds] {
        for (; rounds < kRounds; ++rounds) {
            const QuietLoading quiet;
        }
    });
    int sent = 0;
    for (; rounds < kRounds; ++sent) {
        qWarning("kept");
    }
    EXPECT_EQ(messages, sent);
}

TEST_F(QuietLoadingTest, LeavesAHandlerThatIsInstalledMeanwhile)
{
    {
        const QuietLoading quiet;
        handlerBefore = qInstallMessageHandler(logAndPassOn);
        warnAsTheLoaderDoes("dropped");
    }
    qWarning("later");
    warnAsTheLoaderDoes("over");
    EXPECT_EQ(logged, "seen: dropped\nseen: later\nlater\nseen: over\nover\n");
}

TEST_F(QuietLoadingTest, EndsWithAHandlerThatPassesMessagesBack)
{
    {
        const QuietLoading quiet;
        handlerBefore = qInstallMessageHandler(logAndPassOn);
    }
    const QuietLoading quiet;
    qWarning("again");
    warnAsTheLoaderDoes("dropped");
    EXPECT_EQ(logged.substr(0, 12), "seen: again\n");
    EXPECT_THAT(logged, testing::Not(testing::HasSubstr("dropped")));
}

} // namespace scenariomatch
