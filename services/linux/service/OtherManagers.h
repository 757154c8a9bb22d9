#pragma once

#include <functional>
#include <string>

struct ManagerFinding {
    enum class Kind {
        Free, // no manager runs, or it says that it leaves the interface alone
        NotKnown, // a manager runs that does not know the interface, perhaps not yet
        Unclear, // a manager did not answer the question
        Held,
    };
    Kind kind { Kind::Free };
    std::string text {}; // Held: the name of the program and how to release the interface. Unclear: who did not answer.
};

// Says which other program manages an interface.
class OtherManagers {
public:
    using Found = std::function<void(const ManagerFinding& finding)>;

    virtual ~OtherManagers() = default;
    // Answers from the event loop, soon.
    virtual void find(const std::string& interfaceName, Found found) = 0;
};
