#include "ui/StreamPrompter.h"

#include <ostream>

namespace tavlo {

MessageAnswer StreamPrompter::message(const std::string& title, const std::string& text, MessageButtons buttons) {
    if (out_) *out_ << title << ": " << text << "\n";
    return buttons == MessageButtons::OK ? MessageAnswer::OK : questions_;
}

}  // namespace tavlo
