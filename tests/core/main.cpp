// Unit tests need wxWidgets' base (paths, strings, threads) but no display.
#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    wxDISABLE_DEBUG_SUPPORT();
    const wxInitializer initializer;
    wxLog::EnableLogging(false);
    return initializer.IsOk() ? RUN_ALL_TESTS() : 1;
}
