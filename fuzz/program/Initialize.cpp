#include "host/Shared/Logging/LogRecord.h"

#include <QGuiApplication>

// What every target of the program's own parts needs before its first input: an application without a
// display, and a log that leaves stderr to the fuzzer.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QGuiApplication(*argc, *argv); // as long as the process
    Shared::Logging::LogRecord::instance().setWritesToStandardError(false);
    return 0;
}
