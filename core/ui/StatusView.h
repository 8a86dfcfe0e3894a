#pragma once
#include <string>

namespace tavlo {

// The status window of long operations (transfers, compaction). It refuses to
// be closed by the user; Cancel, where shown, sets the cancelled flag that the
// running operation polls.
class StatusView {
public:
    virtual ~StatusView() = default;
    virtual void show(const std::string& caption, const std::string& line, bool cancelVisible) = 0;
    virtual void setLine(const std::string& line) = 0;
    virtual void hide() = 0;
    virtual bool cancelled() const = 0;
    virtual void resetCancelled() = 0;
};

}  // namespace tavlo
