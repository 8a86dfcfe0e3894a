#include "ui/GuardedApplication.h"

#include <iostream>

#include "db/PoolDatabase.h"

namespace tavlo {

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const PoolBusy&) {
        const PoolMessage message = PoolBusyMessage(poolPath_);
        report(message.title, message.text);
    } catch (const DatabaseError& e) {
        const PoolMessage message = DatabaseErrorMessage(e, poolPath_);
        report(message.title, message.text);
    } catch (const std::exception& e) {
        report("Tavlo", std::string("Something went wrong and was stopped: ") + e.what());
    } catch (...) {
        report("Tavlo", "Something went wrong and was stopped.");
    }
    return false;
}

void GuardedApplication::report(const std::string& title, const std::string& text) {
    // A failure while the message of another is up is only logged: boxes
    // must not pile up on each other.
    if (!report_ || reporting_) {
        std::cerr << "tavlo: " << title << ": " << text << "\n";
        return;
    }
    reporting_ = true;
    try {
        report_(title, text);
    } catch (...) {
        std::cerr << "tavlo: " << title << ": " << text << "\n";
    }
    reporting_ = false;
}

}  // namespace tavlo
