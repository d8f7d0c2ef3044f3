#include "host/ovkAbstractProcessFactory.h"

#include <QString>

#include <gtest/gtest.h>

#include <memory>

namespace
{

class Counter : public ovkAbstractProcess
{
public:
    QString identifier() const override { return QStringLiteral("Counter"); }
};

std::unique_ptr<ovkAbstractProcess> createCounter()
{
    return std::make_unique<Counter>();
}

std::unique_ptr<ovkAbstractProcess> createNothing()
{
    return nullptr;
}

// One factory serves the whole program, so every test registers a type of its own.
ovkAbstractProcessFactory& factory()
{
    return *ovkAbstractProcessFactory::instance();
}

} // namespace

TEST(ovkAbstractProcessFactory, CreatesWhatWasRegistered)
{
    ASSERT_TRUE(factory().registerProcessType(
        QStringLiteral("Creates"), createCounter, QStringLiteral("base")));
    const auto process = factory().create(QStringLiteral("Creates"));
    ASSERT_NE(process, nullptr);
    EXPECT_EQ(process->identifier(), QStringLiteral("Counter"));
    EXPECT_EQ(factory().interfaceName(QStringLiteral("Creates")), QStringLiteral("base"));
    EXPECT_TRUE(factory().types().contains(QStringLiteral("Creates")));
}

TEST(ovkAbstractProcessFactory, CreatesANewProcessEachTime)
{
    factory().registerProcessType(QStringLiteral("New"), createCounter, QString());
    const auto first = factory().create(QStringLiteral("New"));
    const auto second = factory().create(QStringLiteral("New"));
    EXPECT_NE(first.get(), second.get());
}

TEST(ovkAbstractProcessFactory, RefusesATypeASecondTime)
{
    ASSERT_TRUE(factory().registerProcessType(
        QStringLiteral("Twice"), createCounter, QStringLiteral("base")));
    EXPECT_FALSE(factory().registerProcessType(
        QStringLiteral("Twice"), createNothing, QStringLiteral("other")));
    EXPECT_NE(factory().create(QStringLiteral("Twice")), nullptr);
    EXPECT_EQ(factory().interfaceName(QStringLiteral("Twice")), QStringLiteral("base"));
}

TEST(ovkAbstractProcessFactory, RefusesATypeWithoutNameOrCreator)
{
    EXPECT_FALSE(factory().registerProcessType(QString(), createCounter, QString()));
    EXPECT_FALSE(factory().registerProcessType(QStringLiteral("Without"), nullptr, QString()));
    EXPECT_FALSE(factory().types().contains(QStringLiteral("Without")));
}

TEST(ovkAbstractProcessFactory, CreatesNothingForAnUnknownType)
{
    EXPECT_EQ(factory().create(QStringLiteral("Unknown")), nullptr);
    EXPECT_TRUE(factory().interfaceName(QStringLiteral("Unknown")).isEmpty());
}

TEST(ovkAbstractProcess, HasNoParametersOfItsOwn)
{
    Counter counter;
    EXPECT_TRUE(counter.parameterNames().empty());
    EXPECT_FALSE(counter.parameter("debug").has_value());
    EXPECT_FALSE(counter.setParameter("debug", "true"));
}
