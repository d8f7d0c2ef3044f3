#include "app/StorageFile.h"

#include "app/FieldReader.h"
#include "host/XmlTags.h"

#include <QXmlStreamReader>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <yaml-cpp/yaml.h>

namespace scenariomatch
{

namespace
{

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kMatrixTag = "tag:yaml.org,2002:opencv-matrix";
constexpr int kMostCells = 10'000;

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    const std::size_t last = text.find_last_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, last - first + 1);
}

std::optional<double> numberIn(std::string_view text)
{
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto [last, fault] = std::from_chars(text.data(), end, value);
    const bool isNumber = fault == std::errc() && last == end && std::isfinite(value);
    return isNumber ? std::optional(value) : std::nullopt;
}

int countIn(std::string_view text)
{
    const double count = numberIn(trimmed(text)).value_or(0.0);
    return count >= 0.0 && count <= kMostCells ? static_cast<int>(count) : 0;
}

// Leaves the line number of everything behind it as it is.
void blankOutDirective(std::string& text)
{
    if (text.starts_with("%YAML")) {
        text.erase(0, std::min(text.find('\n'), text.size()));
    }
}

StorageEntry entryOf(const std::string& key, const YAML::Node& node, std::size_t line)
{
    StorageEntry entry;
    entry.key = key;
    entry.line = line;
    entry.isScalar = node.IsScalar() || node.IsNull();
    if (node.IsScalar()) {
        entry.text = node.Scalar();
        // Quoted texts carry the tag "!".
        entry.isNumber = node.Tag() != "!" && numberIn(entry.text).has_value();
    }
    return entry;
}

std::string scalarAt(const YAML::Node& map, const char* key)
{
    const YAML::Node node = map[key];
    return node && node.IsScalar() ? node.Scalar() : "";
}

StorageMatrix matrixOf(const std::string& key, const YAML::Node& node)
{
    StorageMatrix matrix;
    matrix.key = key;
    matrix.rows = countIn(scalarAt(node, "rows"));
    matrix.columns = countIn(scalarAt(node, "cols"));
    const YAML::Node data = node["data"];
    if (data && data.IsSequence()) {
        for (const YAML::Node& cell : data) {
            matrix.values.push_back(
                cell.IsScalar() ? numberIn(cell.Scalar()).value_or(std::nan("")) : std::nan(""));
        }
    }
    return matrix;
}

// Throws YAML::Exception where the text is no YAML.
StorageFile readYaml(std::string text)
{
    blankOutDirective(text);
    const YAML::Node root = YAML::Load(text);
    StorageFile file;
    if (!root.IsMap()) {
        throw YAML::Exception(root.Mark(), "names with values are expected");
    }
    for (const auto& pair : root) {
        if (!pair.first.IsScalar()) {
            continue;
        }
        const std::string& key = pair.first.Scalar();
        const YAML::Node& node = pair.second;
        file.entries.push_back(
            entryOf(key, node, static_cast<std::size_t>(pair.first.Mark().line) + 1));
        if (node.IsMap() && node.Tag() == kMatrixTag) {
            file.matrices.push_back(matrixOf(key, node));
        }
    }
    return file;
}

// Reads the XML form; errors stay in the reader.
class XmlStorage
{
public:
    explicit XmlStorage(const std::string& text)
        : m_xml(QByteArray::fromStdString(text))
    {
    }

    StorageFile read()
    {
        StorageFile file;
        if (m_xml.readNextStartElement() && m_xml.name() != QLatin1String("opencv_storage")) {
            m_xml.raiseError(QStringLiteral("the root element is not \"opencv_storage\""));
        }
        while (m_xml.readNextStartElement()) {
            if (m_xml.attributes().value(QLatin1String("type_id")) ==
                QLatin1String("opencv-matrix")) {
                readMatrix(file);
            } else {
                readEntry(file);
            }
        }
        return file;
    }

    const QXmlStreamReader& xml() const { return m_xml; }

private:
    void readEntry(StorageFile& file)
    {
        StorageEntry entry;
        entry.key = m_xml.name().toString().toStdString();
        entry.line = static_cast<std::size_t>(m_xml.lineNumber());
        std::string text;
        while (!m_xml.atEnd() && m_xml.readNext() != QXmlStreamReader::EndElement) {
            if (m_xml.isCharacters()) {
                text += m_xml.text().toString().toStdString();
            } else if (m_xml.isStartElement()) {
                entry.isScalar = false;
                m_xml.skipCurrentElement();
            }
        }
        entry.text = trimmed(text);
        entry.isNumber = numberIn(entry.text).has_value();
        if (entry.text.size() > 1 && entry.text.front() == '"' && entry.text.back() == '"') {
            entry.text = entry.text.substr(1, entry.text.size() - 2);
        }
        file.entries.push_back(entry);
    }

    void readMatrix(StorageFile& file)
    {
        StorageMatrix matrix;
        matrix.key = m_xml.name().toString().toStdString();
        const auto line = static_cast<std::size_t>(m_xml.lineNumber());
        while (m_xml.readNextStartElement()) {
            const QString name = m_xml.name().toString();
            const std::string text = m_xml.readElementText().toStdString();
            if (name == QLatin1String("rows")) {
                matrix.rows = countIn(text);
            } else if (name == QLatin1String("cols")) {
                matrix.columns = countIn(text);
            } else if (name == QLatin1String("data")) {
                std::istringstream cells(text);
                std::string cell;
                while (cells >> cell) {
                    matrix.values.push_back(numberIn(cell).value_or(std::nan("")));
                }
            }
        }
        file.entries.push_back({matrix.key, "", false, false, line});
        file.matrices.push_back(matrix);
    }

    QXmlStreamReader m_xml;
};

// The line of a tag with more attributes than are read.
std::optional<std::ptrdiff_t> crowdedLine(const std::string& text)
{
    const auto tag = findCrowdedTag(QString::fromLatin1(text));
    return tag ? std::optional(1 + std::count(text.begin(), text.begin() + *tag, '\n'))
               : std::nullopt;
}

std::optional<std::string> readWhole(const std::string& path, std::string& error)
{
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        error = path + ": it is no ordinary file";
        return std::nullopt;
    }
    std::ifstream input(path, std::ios::binary);
    std::string text(StorageFile::kLongest + 1, '\0');
    if (!input) {
        error = path + ": " + std::generic_category().message(errno);
        return std::nullopt;
    }
    input.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (input.bad() || (input.fail() && !input.eof())) {
        error = path + ": the file cannot be read";
        return std::nullopt;
    }
    text.resize(static_cast<std::size_t>(input.gcount()));
    if (text.size() > StorageFile::kLongest) {
        error = fmt::format("{}: the file is longer than {} bytes", path, StorageFile::kLongest);
        return std::nullopt;
    }
    return text;
}

} // namespace

std::size_t StorageFile::lineOf(const std::string& key) const
{
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&key](const StorageEntry& entry) {
            return entry.key == key;
        });
    return found == entries.end() ? 0 : found->line;
}

std::optional<StorageFile> readStorageFile(const std::string& path, std::string& error)
{
    const std::optional<std::string> text = readWhole(path, error);
    if (!text) {
        return std::nullopt;
    }
    if (trimmed(*text).starts_with('<')) {
        if (const auto crowded = crowdedLine(*text)) {
            error = fmt::format(
                "{}:{}: a tag has more than {} attributes", path, *crowded, kMostXmlAttributes);
            return std::nullopt;
        }
        XmlStorage storage(*text);
        StorageFile file = storage.read();
        if (!storage.xml().hasError()) {
            return file;
        }
        error = fmt::format(
            "{}:{}:{}: {}",
            path,
            storage.xml().lineNumber(),
            storage.xml().columnNumber() + 1,
            storage.xml().errorString().toStdString());
        return std::nullopt;
    }
    try {
        return readYaml(*text);
    } catch (const YAML::Exception& fault) {
        error = fmt::format(
            "{}:{}:{}: {}",
            path,
            std::max(fault.mark.line, 0) + 1,
            std::max(fault.mark.column, 0) + 1,
            fault.msg);
        return std::nullopt;
    }
}

} // namespace scenariomatch
