#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace scenariomatch
{

// One side of the connection between the program and its engine in a process of its own. Carries
// messages whole. The descriptor, a stream socket, belongs to it.
class EngineChannel
{
public:
    enum class Reading : std::uint8_t { Message, NotYet, Closed };

    explicit EngineChannel(int descriptor)
        : m_descriptor(descriptor)
    {
    }

    EngineChannel(const EngineChannel&) = delete;
    EngineChannel(EngineChannel&&) = delete;
    EngineChannel& operator=(const EngineChannel&) = delete;
    EngineChannel& operator=(EngineChannel&&) = delete;

    ~EngineChannel() { close(); }

    // False when the other side is gone.
    bool send(std::string_view message) const;

    // The next message, once all of it is there. Waits that long for more of it; -1 is for ever.
    Reading receive(std::string& message, int milliseconds);

    // The other side finds the channel closed; what it still says is heard.
    void stopSending() const;

    void close();

private:
    int m_descriptor;
    // What has come and is no whole message yet.
    std::string m_text;
};

// Puts values together to a message, for the same program on the same machine.
class MessageWriter
{
public:
    template <class Value>
    requires std::is_trivially_copyable_v<Value>

    void add(const Value& value)
    {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the value's bytes
        m_text.append(reinterpret_cast<const char*>(&value), sizeof(Value));
    }

    void addText(std::string_view text)
    {
        add(text.size());
        m_text += text;
    }

    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

// Takes a message apart again. Values behind the message's end are empty.
class MessageReader
{
public:
    explicit MessageReader(std::string_view text)
        : m_text(text)
    {
    }

    template <class Value>

    requires std::is_trivially_copyable_v<Value> && std::is_default_constructible_v<Value>
        Value get()
    {
        Value value{};
        if (take(sizeof(Value))) {
            // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the value's bytes
            m_taken.copy(reinterpret_cast<char*>(&value), sizeof(Value));
        }
        return value;
    }

    // Lives as long as the message.
    std::string_view getText() { return take(get<std::size_t>()) ? m_taken : std::string_view(); }

    // Nothing has been asked for that is not there.
    bool isGood() const { return m_isGood; }

private:
    bool take(std::size_t bytes)
    {
        m_isGood = m_isGood && bytes <= m_text.size();
        if (m_isGood) {
            m_taken = m_text.substr(0, bytes);
            m_text.remove_prefix(bytes);
        }
        return m_isGood;
    }

    std::string_view m_text;
    std::string_view m_taken;
    bool m_isGood = true;
};

} // namespace scenariomatch
