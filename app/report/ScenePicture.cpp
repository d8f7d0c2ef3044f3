#include "app/report/ScenePicture.h"

#include <QByteArray>

#include <cerrno>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <fstream>
#include <string_view>
#include <system_error>

namespace scenariomatch
{

namespace
{

// Empty for what is no picture that every browser shows.
std::string_view typeOf(std::string_view bytes)
{
    constexpr std::string_view kPng = "\x89PNG\r\n\x1a\n";
    constexpr std::string_view kJpeg = "\xff\xd8\xff";
    if (bytes.starts_with(kPng)) {
        return "image/png";
    }
    return bytes.starts_with(kJpeg) ? "image/jpeg" : "";
}

std::string base64(const std::string& bytes)
{
    return QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()))
        .toBase64()
        .toStdString();
}

} // namespace

std::optional<std::string> readImage(const std::string& path, std::string& error)
{
    std::ifstream file(path, std::ios::binary);
    std::string bytes(ScenePicture::kLargest + 1, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    if (file.bad() || !file.eof()) {
        const bool isRead = bytes.size() > ScenePicture::kLargest;
        error = isRead ? fmt::format("{}: the picture is larger than 16 MiB", path)
                       : fmt::format("{}: {}", path, std::generic_category().message(errno));
        return std::nullopt;
    }
    const std::string_view type = typeOf(bytes);
    if (type.empty()) {
        error = path + ": the picture is neither PNG nor JPEG";
        return std::nullopt;
    }
    return fmt::format("data:{};base64,{}", type, base64(bytes));
}

std::optional<std::array<double, 4>> parsePlacement(const std::string& text)
{
    std::array<double, 4> placement{};
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t i = 0; i < placement.size(); ++i) {
        if (i > 0 && (at == end || *at++ != ',')) {
            return std::nullopt;
        }
        const auto [rest, error] = std::from_chars(at, end, placement[i]);
        if (error != std::errc() || !std::isfinite(placement[i])) {
            return std::nullopt;
        }
        at = rest;
    }
    const bool isPlace = at == end && placement[0] < placement[2] && placement[1] != placement[3];
    return isPlace ? std::optional(placement) : std::nullopt;
}

} // namespace scenariomatch
