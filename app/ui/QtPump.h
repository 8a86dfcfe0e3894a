#pragma once
#include "ui/Pump.h"

namespace tavlo {

// Runs the event loop for a moment: paints, timers and clicks (Cancel above
// all) happen inside a wait.
class QtPump : public Pump {
public:
    void yield() override;
};

}  // namespace tavlo
