#pragma once

#include <QString>

#include <memory>

class ProfileData;

// Follows a rescan from the user's request to its list.
class RescanProgress {
public:
    void begin(std::weak_ptr<ProfileData> task);
    // The task has not run yet.
    [[nodiscard]] bool isQueued() const { return !m_task.expired(); }
    // A list was shown or discarded. Ends the rescan unless it is still queued: then the list is an older one.
    void endUnlessQueued() { m_asked = isQueued(); }
    // Empty while no rescan is followed.
    [[nodiscard]] QString text(bool deviceExists) const;

private:
    std::weak_ptr<ProfileData> m_task; // the last one that the user asked for
    bool m_asked { false }; // the rescan's list is not shown yet
};
