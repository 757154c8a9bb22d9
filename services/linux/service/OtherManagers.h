#pragma once

#include <functional>
#include <string>

// Says which other program manages an interface.
class OtherManagers {
public:
    // The name of the program and how to release the interface from it; empty if nobody manages it.
    using Found = std::function<void(const std::string& holder)>;

    virtual ~OtherManagers() = default;
    // Answers from the event loop, soon.
    virtual void find(const std::string& interfaceName, Found found) = 0;
};
