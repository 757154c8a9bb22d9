#pragma once

#include <cstddef>
#include <memory>
#include <string>

// A driver service that tests attack through its socket.
class ServiceUnderAttack {
public:
    virtual ~ServiceUnderAttack() = default;

    [[nodiscard]] virtual std::string socketPath() const = 0;
    // Empty if there is none.
    [[nodiscard]] virtual std::string controlPath() const { return {}; }
    [[nodiscard]] virtual std::size_t openDescriptors() const = 0;
    // Allocated or resident, depending on what can be measured.
    [[nodiscard]] virtual std::size_t memoryBytes() const = 0;
    // What memoryBytes() may grow by without a leak.
    [[nodiscard]] virtual std::size_t memoryTolerance() const = 0;
};

// A ServiceHost in this process, which answers every call with as many bytes as it has room for.
[[nodiscard]] std::unique_ptr<ServiceUnderAttack> hostInThisProcess();
// The program pellvane-sim.
[[nodiscard]] std::unique_ptr<ServiceUnderAttack> simulatorProcess();
