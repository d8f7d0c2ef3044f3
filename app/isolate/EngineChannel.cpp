#include "app/isolate/EngineChannel.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace scenariomatch
{

namespace
{

// Stands before every message.
using Length = std::uint64_t;

bool sendAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

// The length of the message that the text begins with, behind its own length; nothing to go by yet
// is as much as can be.
Length lengthOf(const std::string& text)
{
    Length length = ~Length{0};
    if (text.size() >= sizeof(Length)) {
        std::memcpy(&length, text.data(), sizeof(Length));
    }
    return length;
}

} // namespace

bool EngineChannel::send(std::string_view message) const
{
    std::string text;
    const Length length = message.size();
    text.resize(sizeof(Length));
    std::memcpy(text.data(), &length, sizeof(Length));
    text += message;
    return sendAll(m_descriptor, text);
}

EngineChannel::Reading EngineChannel::receive(std::string& message, int milliseconds)
{
    for (;;) {
        const Length length = lengthOf(m_text);
        if (m_text.size() >= sizeof(Length) && m_text.size() - sizeof(Length) >= length) {
            message = m_text.substr(sizeof(Length), length);
            m_text.erase(0, sizeof(Length) + length);
            return Reading::Message;
        }
        pollfd wait{m_descriptor, POLLIN, 0};
        const int found = ::poll(&wait, 1, milliseconds);
        if (found <= 0 && milliseconds >= 0) {
            return Reading::NotYet;
        }
        if (found <= 0) {
            continue;
        }
        std::array<char, 65'536> piece{};
        const ssize_t count = ::recv(m_descriptor, piece.data(), piece.size(), 0);
        if (count <= 0 && errno != EINTR) {
            return Reading::Closed;
        }
        m_text.append(piece.data(), count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

void EngineChannel::stopSending() const
{
    ::shutdown(m_descriptor, SHUT_WR);
}

void EngineChannel::close()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

} // namespace scenariomatch
