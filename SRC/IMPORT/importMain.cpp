#include <csignal>
#include <cstdio>
#include <exception>

#include "COMMON/clsSplitPath.h"
#include "IMPORT/ImportArgs.h"
#include "IMPORT/StopSignal.h"
#include "IMPORT/clsImportRun.h"

int main(int argc, char** argv) {
    UseAnyFileName();
    std::signal(SIGPIPE, SIG_IGN); // who reads the progress may go
    std::signal(SIGXFSZ, SIG_IGN); // a limit of the system is a full disk, and told
    ImportArgs_st args;
    const std::string wrong = ParseImportArgs({argv + 1, argv + argc}, &args);
    if (!wrong.empty()) {
        std::fprintf(stderr, "morentis-import: %s\nTry morentis-import --help.\n", wrong.c_str());
        return int(ImportStatus::WrongArguments);
    }
    if (args.mbHelp || args.mbVersion) {
        std::fputs(args.mbHelp ? GetImportHelp().c_str() : "morentis-import " MORENTIS_VERSION "\n", stdout);
        return std::fflush(stdout) == 0 ? int(ImportStatus::Done) : int(ImportStatus::SomeFailed);
    }
    CatchStopSignals();
    try {
        const ImportStatus status = ImportRun_cls(args, stderr).Run();
        if (GetStopSignal() == 0) return int(status);
        // As whoever waits for us expects of a program that a signal ended.
        std::signal(GetStopSignal(), SIG_DFL);
        return std::raise(GetStopSignal());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "morentis-import: %s\n", error.what());
        return int(ImportStatus::SomeFailed);
    }
}
