#pragma once

#include "services/card/RecordBytes.h"
#include "services/host/ServiceHost.h"
#include "services/linux/card/Card.h"
#include "services/linux/kernel/InterfaceKernel.h"
#include "services/linux/kernel/RadioPosition.h"
#include "services/linux/supplicant/Supplicant.h"

#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>

// The radio switch of one interface.
class InterfaceRadio {
public:
    virtual ~InterfaceRadio() = default;
    [[nodiscard]] virtual RadioPosition position() const = 0;
    // Returns false, after a line in the log, if it cannot be switched.
    [[nodiscard]] virtual bool set(bool isOn) = 0;
};

// Connects the card of one interface with the kernel, the supplicant and the driver transport: carries out what the card
// wants, and tells it what has happened.
class LinuxCard final : private SupplicantListener {
    Q_DISABLE_COPY_MOVE(LinuxCard)

public:
    using Clock = std::function<std::int64_t()>; // milliseconds, monotonic
    using Log = std::function<void(const std::string&)>;
    // Facts older than this are read anew when the client asks for anything. Its figures come a few requests later, so
    // they are fresh although no request waits.
    static constexpr std::int64_t factsAgeMs = 200;

    struct Parts {
        std::unique_ptr<InterfaceKernel> kernel;
        std::unique_ptr<Supplicant> supplicant;
        std::unique_ptr<InterfaceRadio> radio;
        Clock clock;
        Log log;
    };

    LinuxCard(const CardHardware& hardware, bool isReturning, Parts parts);
    ~LinuxCard() override = default;

    // Reads what the first requests need, and calls back once it is known, or after maxPreparationMs.
    static constexpr int maxPreparationMs = 2000;
    static constexpr int wiphyRetryMs = 1000;
    void prepare(std::function<void()> prepared);
    void start();
    [[nodiscard]] ServiceHost::Handler handler();

    // Events of the kernel about the interface.
    void scanEnded(const std::vector<std::uint32_t>& frequenciesMhz);
    void scanAborted();
    void radioChanged();
    void interfaceChanged(bool isUp);
    void regulatoryDomainChanged();
    // Messages of the kernel were lost.
    void eventsMissed();
    void resumed() { m_card.resumed(); }

    [[nodiscard]] const CardState& state() const { return m_card.state(); }

private:
    void supplicantReady() override;
    void supplicantLost() override;
    void supplicantEvent(const SupplicantEvent& event) override;
    void supplicantStatus(const SupplicantStatus& status) override;
    [[nodiscard]] bool supplicantProbed(const SupplicantStatus& status) override;

    void serve(const ServiceRequest& request, ServiceReply reply);
    void apply(const Effects& effects);
    void apply(const StartScan& scan);
    void apply(const AbortScan&) { m_parts.kernel->abortScan(); }
    void apply(const JoinNetwork& join);
    void apply(const WidenSearch& search) { m_parts.supplicant->widenSearch(search.frequenciesMhz, search.isUrgent); }
    void apply(const LeaveNetwork&) { m_parts.supplicant->leave(); }
    void apply(const SetRates& rates);
    void apply(const SetRadio& radio);
    void apply(const BringUp&) { m_parts.kernel->bringUp(complain("to bring the interface up")); }
    template <typename Setting> void apply(const Setting& setting);
    [[nodiscard]] InterfaceKernel::Done complain(const char* what);
    void sayOnce(const std::string& complaint);

    void readWiphy();
    void wiphyKnown();
    void readScan(const std::vector<std::uint32_t>& scannedMhz);
    void refreshFacts();
    void armTimer();
    [[nodiscard]] std::int64_t nowMs() const { return m_parts.clock(); }

    Parts m_parts;
    Card m_card;
    QTimer m_due;
    QTimer m_wiphyRetry; // until the first answer
    QTimer m_preparation;
    std::function<void()> m_prepared;
    bool m_isStarted { false };
    Effects m_effectsAtStart;
    std::int64_t m_factsMs { -factsAgeMs };
    std::set<std::string> m_complaints; // already said
};
