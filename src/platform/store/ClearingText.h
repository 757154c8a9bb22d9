#pragma once

#include "posix/SecureMemory.h"

#include <QByteArray>
#include <QString>

#include <utility>

// Overwrites the content unless it has other owners. Skips literals: they have no header and may lie in read-only memory.
template <typename Text> void overwriteUnlessShared(Text& text)
{
    const auto* header = text.data_ptr().d_ptr();
    if (header && header->ref_.loadRelaxed() == 1) // not through data(), which would detach
        secureClear(text.data_ptr().data(), static_cast<std::size_t>(text.size()) * sizeof(*text.data_ptr().data()));
}

// A stored text, which may be a key: the last of its copies overwrites the characters before it releases them. A copy
// made as a plain QString does not, so it should not outlive this one. One assignment copies and moves.
class ClearingText : public QString { // NOLINT(cppcoreguidelines-special-member-functions)
public:
    ClearingText() = default;
    // Implicit, because every text of a settings file is stored in this way.
    ClearingText(const QString& text)
        : QString(text)
    {
    }
    ClearingText(QString&& text)
        : QString(std::move(text))
    {
    }
    ClearingText(const ClearingText&) = default;
    ClearingText(ClearingText&&) noexcept = default;
    ~ClearingText() { overwriteUnlessShared(*this); }

    ClearingText& operator=(ClearingText other) noexcept
    {
        swap(other);
        return *this;
    }
};
