#include "app/report/ReportPage.h"

#include "app/report/ReportTemplate.h"

#include <QByteArray>

#include <array>
#include <stdexcept>
#include <zlib.h>

namespace scenariomatch
{

namespace
{

// With a header that holds no time and no name.
QByteArray gzip(const std::string& text)
{
    constexpr int kGzipWindow = 15 + 16;
    constexpr int kMemoryLevel = 8;
    constexpr std::size_t kPiece = std::size_t{1} << 30U;
    z_stream stream{};
    if (::deflateInit2(
            &stream,
            Z_DEFAULT_COMPRESSION,
            Z_DEFLATED,
            kGzipWindow,
            kMemoryLevel,
            Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("the report cannot be compressed");
    }
    std::array<char, std::size_t{64} * 1024> buffer{};
    QByteArray bytes;
    std::string_view rest = text;
    do {
        const std::string_view piece = rest.substr(0, kPiece);
        rest.remove_prefix(piece.size());
        // zlib does not write to what it reads.
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(piece.data()));
        stream.avail_in = static_cast<uInt>(piece.size());
        do {
            stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
            stream.avail_out = static_cast<uInt>(buffer.size());
            ::deflate(&stream, rest.empty() ? Z_FINISH : Z_NO_FLUSH);
            bytes.append(buffer.data(), static_cast<qsizetype>(buffer.size() - stream.avail_out));
        } while (stream.avail_out == 0);
    } while (!rest.empty());
    ::deflateEnd(&stream);
    return bytes;
}

void appendData(std::string& page, std::string_view id, const std::string& text)
{
    page += R"(<script type="text/plain" id=")";
    page += id;
    page += "\">";
    page += gzip(text).toBase64().toStdString();
    page += "</script>\n";
}

} // namespace

std::string makeReportPage(std::string_view page, const ReportData& data)
{
    const std::size_t place = page.find(kReportDataPlace);
    if (place == std::string_view::npos) {
        throw std::runtime_error("the report page has no place for data");
    }
    std::string whole(page.substr(0, place));
    appendData(whole, "report-data", data.tables);
    appendData(whole, "report-tracks", data.tracks);
    appendData(whole, "report-why", data.why);
    whole += page.substr(place + kReportDataPlace.size());
    return whole;
}

} // namespace scenariomatch
