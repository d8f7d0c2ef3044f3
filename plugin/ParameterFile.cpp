#include "plugin/ParameterFile.h"

#include "plugin/ParameterText.h"

#include <opencv2/core/persistence.hpp>
#include <opencv2/core/utility.hpp>
#include <opencv2/core/utils/logger.hpp>

#include <exception>
#include <limits>

namespace scenariomatch
{

namespace
{

int keepQuiet(int /*status*/, const char*, const char*, const char*, int /*line*/, void*)
{
    return 0;
}

// Keeps the library from writing to the console for as long as it lives.
class SilentLibrary
{
public:
    SilentLibrary()
        : m_logLevel(cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT))
        , m_errorCallback(cv::redirectError(keepQuiet, nullptr, &m_errorData))
    {
    }

    SilentLibrary(const SilentLibrary&) = delete;
    SilentLibrary(SilentLibrary&&) = delete;
    SilentLibrary& operator=(const SilentLibrary&) = delete;
    SilentLibrary& operator=(SilentLibrary&&) = delete;

    ~SilentLibrary()
    {
        cv::redirectError(m_errorCallback, m_errorData);
        cv::utils::logging::setLogLevel(m_logLevel);
    }

private:
    cv::utils::logging::LogLevel m_logLevel;
    void* m_errorData = nullptr;
    cv::ErrorCallback m_errorCallback;
};

cv::FileNode find(const cv::FileStorage& file, const std::string& key)
{
    try {
        return file[key];
    } catch (const std::exception&) {
        // The file's top level is no map, so it holds no keys.
        return {};
    }
}

} // namespace

struct ParameterFile::Storage
{
    SilentLibrary silence;
    cv::FileStorage file;
    std::string fault;
};

ParameterFile::ParameterFile(const std::string& path)
    : m_storage(std::make_unique<Storage>())
{
    const std::optional<std::string> text = readParameterText(path, m_storage->fault);
    const std::optional<std::string> fault = text ? findParameterFault(*text) : std::nullopt;
    if (!text || fault) {
        m_storage->fault = fault.value_or(m_storage->fault);
        return;
    }
    try {
        m_storage->file.open(*text, cv::FileStorage::READ | cv::FileStorage::MEMORY);
    } catch (const cv::Exception& error) {
        // As if there were no file.
        m_storage->file.release();
        m_storage->fault = error.err;
    } catch (const std::exception& error) {
        m_storage->file.release();
        m_storage->fault = error.what();
    }
}

ParameterFile::~ParameterFile() = default;

bool ParameterFile::isOpen() const
{
    return m_storage->file.isOpened();
}

const std::string& ParameterFile::fault() const
{
    return m_storage->fault;
}

std::string ParameterFile::text(const std::string& key) const
{
    const auto node = find(m_storage->file, key);
    return node.isString() ? node.string() : std::string();
}

int ParameterFile::whole(const std::string& key) const
{
    const auto node = find(m_storage->file, key);
    if (node.isInt()) {
        return static_cast<int>(node);
    }
    if (node.isReal()) {
        return cvRound(static_cast<double>(node));
    }
    return node.empty() || node.isNone() ? 0 : std::numeric_limits<int>::max();
}

double ParameterFile::real(const std::string& key) const
{
    const auto node = find(m_storage->file, key);
    if (node.isInt() || node.isReal()) {
        return node.real();
    }
    return node.empty() || node.isNone() ? 0.0 : 1e300;
}

} // namespace scenariomatch
