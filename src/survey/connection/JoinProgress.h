#pragma once

#include <QString>

// What a connection depends on, and so the likely reasons for a failure.
struct JoinRequirements {
    bool key { false };
    bool typedName { false }; // of a hidden network
    bool adHoc { false };
};

// Tells the user how a connection proceeds until the link is up. Driven by the ticks of the site survey; sends nothing
// to the driver.
class JoinProgress {
public:
    // A connection was queued. network is the display name; empty if it is unknown.
    void begin(const QString& network, const JoinRequirements& requirements);
    // linkUp: the result of the probe before this tick ran its task. stillQueued: the connection waits for other tasks.
    void tick(bool linkUp, bool stillQueued);
    // The card was removed.
    void reset();

    // Empty if no connection is in progress.
    [[nodiscard]] QString text() const;
    // The longest text for a name of ordinary letters; for reserving space.
    [[nodiscard]] static QString longText();

private:
    enum class State {
        Idle,
        Queued, // the probe still sees the previous link, also in the tick that runs the task
        Waiting,
        Failed,
    };

    State m_state { State::Idle };
    QString m_network;
    JoinRequirements m_requirements;
    int m_ticksWaited { 0 };
};
