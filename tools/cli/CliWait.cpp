#include "CliWait.h"

#include "CliCommand.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <thread>

namespace tavlo::cli {
namespace {

volatile std::sig_atomic_t gInterrupted = 0;
struct sigaction gPrevious {};

void OnInterrupt(int) { gInterrupted = 1; }

constexpr std::int64_t kQuietMs = 1000;    // a wait shorter than this says nothing
constexpr std::int64_t kReportMs = 5000;   // then how long it has waited, this often
constexpr std::int64_t kCancelGraceMs = 1000;

}  // namespace

CliStatus::CliStatus(std::ostream& err, const Clock& clock) : err_(err), clock_(clock) {}

CliStatus::~CliStatus() {
    if (catching_) sigaction(SIGINT, &gPrevious, nullptr);
}

void CliStatus::show(const std::string& caption, const std::string& line, bool) {
    begin(line.empty() ? caption : caption + ": " + line);
    cancelWatched_ = true;
}

void CliStatus::setLine(const std::string& line) {
    what_ = line;
    said_ = false;
}

void CliStatus::hide() { active_ = cancelWatched_ = false; }

bool CliStatus::cancelled() const { return gInterrupted != 0; }

// Ctrl-C pressed before a wait started still counts for it.
void CliStatus::resetCancelled() {}

void CliStatus::begin(const std::string& what) {
    // Ctrl-C is caught from the first wait on; before it, it ends the
    // program as usual.
    if (!catching_) {
        struct sigaction action {};
        action.sa_handler = OnInterrupt;
        sigemptyset(&action.sa_mask);
        sigaction(SIGINT, &action, &gPrevious);
        catching_ = true;
    }
    what_ = what;
    active_ = true;
    cancelWatched_ = false;
    said_ = false;
    since_ = clock_.now();
    nextReport_ = since_ + kQuietMs;
}

void CliStatus::tick() {
    const std::int64_t now = clock_.now();
    if (gInterrupted) {
        static std::int64_t noticed = now;
        if (!cancelWatched_ || now - noticed >= kCancelGraceMs) {
            err_ << "tavlo-cli: cancelled" << std::endl;
            std::cout.flush();
            // Nothing is open that a hard end could damage: no pool, no file
            // being written. The MIDI system drops the ports with the process.
            std::_Exit(kExitCancelled);
        }
        return;
    }
    if (!active_ || now < nextReport_) return;
    if (!said_) {
        err_ << "tavlo-cli: " << what_ << std::endl;
        said_ = true;
    } else {
        err_ << "tavlo-cli: " << what_ << " (" << (now - since_) / 1000 << " s)" << std::endl;
    }
    nextReport_ = now + kReportMs;
}

void CliPump::yield() {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    status_.tick();
}

}  // namespace tavlo::cli
