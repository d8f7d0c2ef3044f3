#include "app/RuleReport.h"

#include "app/PrintableText.h"

#include <QString>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

// What there is to say of a case that has not passed.
std::vector<std::string> linesOf(const RuleVerdict& verdict)
{
    std::vector<std::string> lines = verdict.differences;
    if (verdict.fault) {
        lines = {"cannot be run: " + *verdict.fault};
    }
    std::transform(lines.begin(), lines.end(), lines.begin(), printable);
    return lines;
}

class TextReport : public RuleReport
{
public:
    explicit TextReport(std::ostream& out)
        : m_out(out)
    {
    }

    void
    add(const std::string& fileName, const RuleCase& ruleCase, const RuleVerdict& verdict) override
    {
        if (m_cases++ == 0 || fileName != m_fileName) {
            m_fileName = fileName;
            m_out << printable(fileName) << '\n';
        }
        if (verdict.isPassed()) {
            m_out << "  passed  " << printable(ruleCase.name) << '\n';
            return;
        }
        ++m_failures;
        m_out << fmt::format("  FAILED  {} (line {})\n", printable(ruleCase.name), ruleCase.line());
        for (const std::string& line : linesOf(verdict)) {
            m_out << "    " << line << '\n';
        }
    }

    void finish() override
    {
        m_out << fmt::format(
            "{} {}, {} failed\n", m_cases, m_cases == 1 ? "case" : "cases", m_failures);
        m_out.flush();
    }

private:
    std::ostream& m_out;
    std::string m_fileName;
    std::size_t m_cases = 0;
    std::size_t m_failures = 0;
};

// Test Anything Protocol, version 13.
class TapReport : public RuleReport
{
public:
    explicit TapReport(std::ostream& out)
        : m_out(out)
    {
        m_out << "TAP version 13\n";
    }

    void
    add(const std::string& fileName, const RuleCase& ruleCase, const RuleVerdict& verdict) override
    {
        std::string name;
        for (const char character : printable(fileName + ": " + ruleCase.name)) {
            name += character == '#' || character == '\\' ? "\\" : "";
            name += character;
        }
        m_out << fmt::format("{} {} - {}\n", verdict.isPassed() ? "ok" : "not ok", ++m_cases, name);
        for (const std::string& line : linesOf(verdict)) {
            m_out << "# " << line << '\n';
        }
    }

    void finish() override
    {
        m_out << "1.." << m_cases << '\n';
        m_out.flush();
    }

private:
    std::ostream& m_out;
    std::size_t m_cases = 0;
};

// The XML that build servers read; a suite for each file.
class JUnitReport : public RuleReport
{
public:
    explicit JUnitReport(std::ostream& out)
        : m_out(out)
    {
    }

    void
    add(const std::string& fileName, const RuleCase& ruleCase, const RuleVerdict& verdict) override
    {
        if (m_suites.empty() || m_suites.back().name != fileName) {
            m_suites.push_back({fileName, {}});
        }
        Entry entry{ruleCase.name, verdict.fault.has_value(), {}};
        for (const std::string& line : linesOf(verdict)) {
            entry.text += line + "\n";
        }
        m_suites.back().entries.push_back(std::move(entry));
    }

    void finish() override
    {
        QByteArray bytes;
        QXmlStreamWriter writer(&bytes);
        writer.setAutoFormatting(true);
        writer.writeStartDocument();
        writer.writeStartElement(QStringLiteral("testsuites"));
        for (const Suite& suite : m_suites) {
            writeSuite(writer, suite);
        }
        writer.writeEndElement();
        writer.writeEndDocument();
        m_out.write(bytes.constData(), static_cast<std::streamsize>(bytes.size()));
        m_out.flush();
    }

private:
    struct Entry
    {
        std::string name;
        bool isFault = false;
        // Empty for a case that has passed.
        std::string text;
    };

    struct Suite
    {
        std::string name;
        std::vector<Entry> entries;

        qsizetype count(bool isFault) const
        {
            return std::count_if(entries.begin(), entries.end(), [isFault](const Entry& entry) {
                return !entry.text.empty() && entry.isFault == isFault;
            });
        }
    };

    static QString text(const std::string& text) { return QString::fromStdString(printable(text)); }

    static void writeSuite(QXmlStreamWriter& writer, const Suite& suite)
    {
        writer.writeStartElement(QStringLiteral("testsuite"));
        writer.writeAttribute(QStringLiteral("name"), text(suite.name));
        writer.writeAttribute(QStringLiteral("tests"), QString::number(suite.entries.size()));
        writer.writeAttribute(QStringLiteral("failures"), QString::number(suite.count(false)));
        writer.writeAttribute(QStringLiteral("errors"), QString::number(suite.count(true)));
        for (const Entry& entry : suite.entries) {
            writer.writeStartElement(QStringLiteral("testcase"));
            writer.writeAttribute(QStringLiteral("classname"), text(suite.name));
            writer.writeAttribute(QStringLiteral("name"), text(entry.name));
            if (!entry.text.empty()) {
                writeFailure(writer, entry);
            }
            writer.writeEndElement();
        }
        writer.writeEndElement();
    }

    static void writeFailure(QXmlStreamWriter& writer, const Entry& entry)
    {
        writer.writeStartElement(
            entry.isFault ? QStringLiteral("error") : QStringLiteral("failure"));
        writer.writeAttribute(
            QStringLiteral("message"),
            entry.isFault ? QStringLiteral("cannot be run")
                          : QStringLiteral("other events than expected"));
        writer.writeCharacters(QString::fromStdString(entry.text));
        writer.writeEndElement();
    }

    std::ostream& m_out;
    std::vector<Suite> m_suites;
};

} // namespace

std::unique_ptr<RuleReport> makeRuleReport(RuleReportFormat format, std::ostream& out)
{
    switch (format) {
    case RuleReportFormat::Tap:
        return std::make_unique<TapReport>(out);
    case RuleReportFormat::JUnit:
        return std::make_unique<JUnitReport>(out);
    case RuleReportFormat::Text:
        break;
    }
    return std::make_unique<TextReport>(out);
}

} // namespace scenariomatch
