#include <QApplication>

#include <benchmark/benchmark.h>

namespace {

#ifdef __clang__
const char compiler[] = "clang " __VERSION__;
#else
const char compiler[] = "gcc " __VERSION__;
#endif

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen"); // rows of widgets need no display
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::AddCustomContext("qt", qVersion());
    benchmark::AddCustomContext("compiler", compiler);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
