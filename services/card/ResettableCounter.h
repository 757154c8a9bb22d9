#pragma once

#include <optional>

// A counter that the driver interface can reset although its source cannot be reset. It never runs backwards.
template <typename Count> class ResettableCounter {
public:
    void add(Count amount) { m_value += amount; }

    // Follows the running count of a source. The first reading is the base to count from. A reading below the previous
    // one comes from a source that restarted at 0.
    void follow(Count reading)
    {
        if (m_reading)
            add(reading >= *m_reading ? reading - *m_reading : reading);
        m_reading = reading;
    }

    // Counts from 0 again, starting at the latest reading.
    void reset() { m_value = Count {}; }

    [[nodiscard]] Count value() const { return m_value; }

private:
    Count m_value {};
    std::optional<Count> m_reading;
};
