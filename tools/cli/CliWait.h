#pragma once
#include <cstdint>
#include <iosfwd>
#include <string>

#include "ui/Pump.h"
#include "ui/StatusView.h"

namespace tavlo::cli {

// The status window of the command line. Ctrl-C is its Cancel: a wait that
// polls it (a dump exchange) ends as cancelled. Anything that goes on for
// more than a second says on `err` what it is waiting for, and every few
// seconds how long it has waited.
class CliStatus : public StatusView {
public:
    CliStatus(std::ostream& err, const Clock& clock);
    ~CliStatus() override;

    void show(const std::string& caption, const std::string& line, bool cancelVisible) override;
    void setLine(const std::string& line) override;
    void hide() override;
    bool cancelled() const override;
    void resetCancelled() override;

    // Work that isn't a dump exchange (sending, searching): said on `err`
    // the same way when it lasts, until `hide`.
    void begin(const std::string& what);

    // From the pump: prints what is due. Ends the program with status 4 when
    // Ctrl-C was pressed and nothing that can be cancelled took notice
    // within a second: such waits hold nothing that could be damaged.
    void tick();

private:
    std::ostream& err_;
    const Clock& clock_;
    std::string what_;
    bool active_ = false;
    bool cancelWatched_ = false;
    std::int64_t since_ = 0;
    std::int64_t nextReport_ = 0;
    bool said_ = false;
    bool catching_ = false;
};

// A headless pump that keeps the status above going.
class CliPump : public Pump {
public:
    explicit CliPump(CliStatus& status) : status_(status) {}
    void yield() override;

private:
    CliStatus& status_;
};

}  // namespace tavlo::cli
