#pragma once

#include "platform/Pasteboard.h"

#include <utility>
#include <vector>

/// A clipboard in memory, changed by other programs as a test says.
class FakePasteboard final : public Pasteboard
{
public:
    PasteboardContents now;
    qint64 count = 0;

    /// What write() was given, oldest first.
    std::vector<PasteboardContents> written;

    qint64 changeCount() const override { return count; }
    const PasteboardContents& contents() const override { return now; }
    void write(PasteboardContents contents) override
    {
        written.push_back(contents);
        copy(std::move(contents));
    }
    void whenRead(std::function<void()> then) override { m_whenRead = std::move(then); }
    void setChangeHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

    /// Another program copies.
    void copy(PasteboardContents contents)
    {
        now = std::move(contents);
        bump();
    }
    void copyText(const QString& text)
    {
        PasteboardContents contents;
        contents.types = {PasteboardType::plainText};
        contents.string = text;
        copy(std::move(contents));
    }

    /// Another program fetches what was written.
    void read()
    {
        if (const auto then = std::exchange(m_whenRead, nullptr))
            then();
    }

    /// The count grows, whatever the contents.
    void bump()
    {
        ++count;
        // The handler may set another one.
        if (const auto handler = m_handler)
            handler();
    }

private:
    std::function<void()> m_handler;
    std::function<void()> m_whenRead;
};
