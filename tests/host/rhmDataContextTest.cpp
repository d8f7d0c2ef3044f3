#include "host/rhmDataContext.h"

#include <QString>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> texts(const rhmDataContext& context)
{
    std::vector<std::string> lines;
    for (const auto& error : context.errors()) {
        lines.push_back(error.text());
    }
    return lines;
}

bool read(rhmDataContext& context, const char* text)
{
    return context.readText(QByteArray(text), QStringLiteral("c.xml"));
}

QString dataFile(const char* name)
{
    return QStringLiteral(SCENARIOMATCH_TEST_DATA "/host/") + QString::fromLatin1(name);
}

} // namespace

TEST(rhmDataContext, ReadsEveryKindOfElement)
{
    rhmDataContext context;
    ASSERT_TRUE(context.read(dataFile("lobby.xml")));
    EXPECT_THAT(texts(context), IsEmpty());
    const auto& elements = context.getContext();
    ASSERT_EQ(elements.size(), 4U);
    EXPECT_EQ(elements[0].kind, "zone");
    EXPECT_EQ(elements[0].name, "Entrance");
    EXPECT_EQ(elements[0].shape, "polygon");
    ASSERT_EQ(elements[0].vertices.size(), 3U);
    EXPECT_EQ(elements[0].vertices[2].x, 4.5);
    EXPECT_EQ(elements[0].vertices[2].y, -3.0);
    EXPECT_EQ(elements[0].vertices[2].z, 0.25);
    EXPECT_EQ(elements[1].kind, "camera");
    EXPECT_EQ(elements[1].shape, "");
    EXPECT_EQ(elements[2].shape, "circle");
    EXPECT_EQ(elements[2].height, 1.1);
    EXPECT_EQ(elements[2].radius, 0.6);
    EXPECT_EQ(elements[2].vertices[0].z, 0.0);
    EXPECT_EQ(elements[3].name, "North & West");
    EXPECT_EQ(elements[3].height, 2.5);
    EXPECT_EQ(elements[3].radius, 0.0);
}

TEST(rhmDataContext, ReplacesWhatWasReadBefore)
{
    rhmDataContext context;
    ASSERT_TRUE(context.read(dataFile("lobby.xml")));
    EXPECT_FALSE(context.read(dataFile("missing.xml")));
    EXPECT_TRUE(context.getContext().empty());
    EXPECT_TRUE(read(context, "<Context/>"));
    EXPECT_THAT(texts(context), IsEmpty());
}

TEST(rhmDataContext, NamesAFileThatCannotBeOpened)
{
    rhmDataContext context;
    EXPECT_FALSE(context.read(QStringLiteral("/nowhere/c.xml")));
    EXPECT_THAT(texts(context), ElementsAre("/nowhere/c.xml:1:1: No such file or directory"));
}

TEST(rhmDataContext, NamesADirectoryAndAnEmptyName)
{
    rhmDataContext context;
    EXPECT_FALSE(context.read(dataFile("")));
    EXPECT_EQ(context.errors().size(), 1U);
    EXPECT_FALSE(context.read(QString()));
    EXPECT_THAT(texts(context), ElementsAre(":1:1: no file is named"));
    EXPECT_FALSE(context.read(QString()));
    EXPECT_EQ(context.errors().size(), 1U);
}

TEST(rhmDataContext, RefusesElementsWithTooFewVerticesWithTheirPlace)
{
    rhmDataContext context;
    ASSERT_TRUE(read(
        context,
        "<Context>\n"
        "  <Element kind='zone' name='Z' shape='polygon'><Vertex x='0' y='0'/><Vertex x='1' "
        "y='0'/></Element>\n"
        "  <Element kind='object' name='O' shape='polygon'/>\n"
        "    <Element kind='object' name='C' shape='circle'/>\n"
        "  <Element kind='wall' name='W' shape='polygon'><Vertex x='0' y='0'/></Element>\n"
        "  <Element kind='wall' name='Sound' shape='polygon'><Vertex x='0' y='0'/><Vertex x='1' "
        "y='0'/></Element>\n"
        "</Context>\n"));
    EXPECT_THAT(
        texts(context),
        ElementsAre(
            "c.xml:2:3: the element \"Z\" has 2 vertices and needs 3",
            "c.xml:3:3: the element \"O\" has 0 vertices and needs 3",
            "c.xml:4:5: the element \"C\" has 0 vertices and needs 1",
            "c.xml:5:3: the element \"W\" has 1 vertices and needs 2"));
    ASSERT_EQ(context.getContext().size(), 1U);
    EXPECT_EQ(context.getContext()[0].name, "Sound");
}

TEST(rhmDataContext, AsksNoVerticesOfWhatIsNoKnownShape)
{
    rhmDataContext context;
    ASSERT_TRUE(read(
        context,
        "<Context><Element kind='zone' shape='circle'/><Element kind='wall' shape='circle'/>"
        "<Element kind='object' shape='cube'/><Element kind='camera' shape='polygon'/></Context>"));
    EXPECT_EQ(context.getContext().size(), 4U);
    EXPECT_THAT(texts(context), IsEmpty());
}

TEST(rhmDataContext, RefusesNumbersThatAreNone)
{
    rhmDataContext context;
    ASSERT_TRUE(read(
        context,
        "<Context>\n"
        "<Element kind='camera' height='tall'/>\n"
        "<Element kind='camera' radius='nan'/>\n"
        "<Element kind='camera'><Vertex x='1,5' y='1'/></Element>\n"
        "<Element kind='camera'><Vertex x='1' y='1' z='1e999'/></Element>\n"
        "<Element kind='camera'><Vertex x='1'/></Element>\n"
        "<Element kind='camera' name='sound'/>\n"
        "</Context>"));
    EXPECT_THAT(
        texts(context),
        ElementsAre(
            "c.xml:2:1: the attribute \"height\" is no finite number: \"tall\"",
            "c.xml:3:1: the attribute \"radius\" is no finite number: \"nan\"",
            "c.xml:4:24: the attribute \"x\" is no finite number: \"1,5\"",
            "c.xml:5:24: the attribute \"z\" is no finite number: \"1e999\"",
            "c.xml:6:24: the attribute \"y\" is missing"));
    ASSERT_EQ(context.getContext().size(), 1U);
    EXPECT_EQ(context.getContext()[0].name, "sound");
}

TEST(rhmDataContext, RefusesAnElementWithoutKind)
{
    rhmDataContext context;
    ASSERT_TRUE(read(context, "<Context><Element name='x'/></Context>"));
    EXPECT_THAT(texts(context), ElementsAre("c.xml:1:10: the element has no kind"));
    EXPECT_TRUE(context.getContext().empty());
}

TEST(rhmDataContext, ReportsElementsThatItDoesNotKnow)
{
    rhmDataContext context;
    ASSERT_TRUE(read(
        context,
        "<Context>\n<Zone><Element kind='camera'/></Zone>\n"
        "<Element kind='camera'><Point/></Element>\n</Context>"));
    EXPECT_THAT(
        texts(context),
        ElementsAre(
            "c.xml:2:1: <Zone> is not known here", "c.xml:3:24: <Point> is not known here"));
    EXPECT_EQ(context.getContext().size(), 1U);
}

TEST(rhmDataContext, RefusesAnotherRootElement)
{
    rhmDataContext context;
    EXPECT_FALSE(read(context, "<Scene><Element kind='camera'/></Scene>"));
    EXPECT_THAT(texts(context), ElementsAre("c.xml:1:1: <Context> is expected, not <Scene>"));
}

TEST(rhmDataContext, RefusesWhatIsNotWellFormed)
{
    rhmDataContext context;
    EXPECT_FALSE(read(context, "<Context>\n  <Element kind='camera'/>\n  </Kontext>"));
    ASSERT_EQ(context.errors().size(), 1U);
    EXPECT_THAT(texts(context)[0], HasSubstr("c.xml:3:"));
    EXPECT_TRUE(context.getContext().empty());
    EXPECT_FALSE(read(context, ""));
    EXPECT_EQ(context.errors().size(), 1U);
    EXPECT_FALSE(read(context, "<Context/> and more"));
    EXPECT_EQ(context.errors().size(), 1U);
}

TEST(rhmDataContext, BearsATextCutAtEveryByte)
{
    const QByteArray whole("<Context>\n<Element kind='zone' name='Z\xc3\xa9' shape='polygon'>"
                           "<Vertex x='0' y='0'/><Vertex x='1' y='0'/><Vertex x='1' y='1'/>"
                           "</Element></Context>");
    rhmDataContext context;
    for (qsizetype size = 0; size < whole.size(); ++size) {
        EXPECT_FALSE(context.readText(whole.left(size), QStringLiteral("c.xml"))) << size;
        EXPECT_TRUE(context.getContext().empty()) << size;
        EXPECT_EQ(context.errors().size(), 1U) << size;
    }
    EXPECT_TRUE(context.readText(whole, QStringLiteral("c.xml")));
}

TEST(rhmDataContext, RefusesTextBeyondItsLimits)
{
    rhmDataContext context({.fileBytes = 30});
    EXPECT_FALSE(read(context, "<Context>                     </Context>"));
    EXPECT_THAT(texts(context), ElementsAre("c.xml:1:1: larger than 30 bytes"));
    EXPECT_FALSE(context.read(dataFile("lobby.xml")));
    EXPECT_THAT(texts(context), ElementsAre(HasSubstr(":1:1: larger than 30 bytes")));
}

TEST(rhmDataContext, RefusesATagWithTooManyAttributes)
{
    rhmDataContext context({.attributes = 2});
    EXPECT_TRUE(read(context, "<Context a='' b=''/>"));
    EXPECT_FALSE(read(context, "<Context>\n <Element kind='camera' b='' c=''/></Context>"));
    EXPECT_THAT(texts(context), ElementsAre("c.xml:2:2: a tag has more than 2 attributes"));
}

TEST(rhmDataContext, CountsAHundredThousandProblemsAtOnce)
{
    std::string text = "<Context>\n";
    for (int i = 0; i < 100'000; ++i) {
        text += "<Other/>\n";
    }
    rhmDataContext context;
    EXPECT_TRUE(read(context, (text + "</Context>").c_str()));
    EXPECT_EQ(context.errors().size(), 100U);
    EXPECT_EQ(context.errors().back().line, 101);
    EXPECT_EQ(context.unreportedErrors(), 99'900U);
}

TEST(rhmDataContext, RefusesMoreElementsAndVerticesThanItsLimits)
{
    rhmDataContext context({.elements = 1, .verticesPerElement = 2});
    EXPECT_FALSE(
        read(context, "<Context><Element kind='camera'/>\n<Element kind='camera'/></Context>"));
    EXPECT_THAT(texts(context), ElementsAre("c.xml:2:1: more than 1 elements"));
    EXPECT_TRUE(context.getContext().empty());
    EXPECT_FALSE(read(
        context,
        "<Context><Element kind='camera'><Vertex x='0' y='0'/><Vertex x='0' y='0'/>\n"
        "<Vertex x='0' y='0'/></Element></Context>"));
    EXPECT_THAT(texts(context), ElementsAre("c.xml:2:1: more than 2 vertices in an element"));
}

TEST(rhmDataContext, RefusesEntitiesThatExplode)
{
    rhmDataContext context;
    EXPECT_FALSE(read(
        context,
        "<!DOCTYPE Context [<!ENTITY a 'aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa'>"
        "<!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>"
        "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'>]>"
        "<Context><Element kind='&c;'/></Context>"));
    EXPECT_EQ(context.errors().size(), 1U);
}

TEST(rhmDataContext, CountsProblemsBeyondTheLimit)
{
    rhmDataContext context({.errors = 2});
    ASSERT_TRUE(read(context, "<Context><A/><B/><C/><D/><E/></Context>"));
    EXPECT_EQ(context.errors().size(), 2U);
    EXPECT_EQ(context.unreportedErrors(), 3U);
}

TEST(rhmDataContext, BearsDeepNesting)
{
    QByteArray text("<Context>");
    for (int depth = 0; depth < 100'000; ++depth) {
        text.append("<A>");
    }
    rhmDataContext context;
    EXPECT_FALSE(context.readText(text, QStringLiteral("c.xml")));
    EXPECT_TRUE(context.getContext().empty());
}
