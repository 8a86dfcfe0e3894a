#include "ui/QtPump.h"

#include <QCoreApplication>
#include <QThread>

namespace tavlo {

void QtPump::yield() {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    // A wait loop must not spin a core while nothing happens.
    QThread::msleep(1);
}

}  // namespace tavlo
