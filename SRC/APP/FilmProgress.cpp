#include "APP/FilmProgress.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kBarWidth = 30;
constexpr long kTerminalMillis = 100; // between two looks of the bar
constexpr long kLineMillis = 5000;    // between two lines of a log

std::string Format(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof(text), format, value);
    return text;
}

/// "1:05", with hours "2:01:05"; what is left is at least a second.
std::string MakeTime(double seconds) {
    const long long whole = std::max(1LL, std::llround(std::min(seconds, 3.6e8)));
    char text[64];
    if (whole >= 3600)
        std::snprintf(text, sizeof(text), "%lld:%02d:%02d", whole / 3600, int(whole / 60 % 60),
                      int(whole % 60));
    else
        std::snprintf(text, sizeof(text), "%d:%02d", int(whole / 60), int(whole % 60));
    return text;
}

} // namespace

std::string FilmProgress_cls::MakeLine(int done, int total, int drawn, double seconds) {
    std::string text = "Frame " + std::to_string(done) + " of " + std::to_string(total);
    if (drawn <= 0 || seconds <= 0.0) return text;
    const double rate = drawn / seconds;
    text += ", " + (rate >= 0.95 ? Format("%.1f frames/s", rate) : Format("%.1f s a frame", 1.0 / rate));
    if (done < total) text += ", " + MakeTime((total - done) / rate) + " left";
    return text;
}

std::string FilmProgress_cls::MakeBar(int done, int total, int width) {
    const long long full = total > 0 ? static_cast<long long>(width) * std::min(done, total) / total : 0;
    return "[" + std::string(size_t(full), '#') + std::string(size_t(width - full), '-') + "]";
}

void FilmProgress_cls::Begin(int total) {
    mTotal = total;
    mDrawn = mKept = 0;
    mWatch.Start();
    mLastShown = mbTerminal ? -kTerminalMillis : 0;
    Show();
}

void FilmProgress_cls::Count(bool bDrawn) {
    ++(bDrawn ? mDrawn : mKept);
    Show();
}

void FilmProgress_cls::Show() {
    if (!mpOut) return;
    const bool bLast = GetDone() >= mTotal;
    const long gap = mbTerminal ? kTerminalMillis : kLineMillis;
    if (!bLast && mWatch.Time() - mLastShown < gap) return;
    mLastShown = mWatch.Time();
    const std::string line = MakeLine(GetDone(), mTotal, mDrawn, GetSeconds());
    if (mbTerminal)
        std::fprintf(mpOut, "\r%s %s\033[K", MakeBar(GetDone(), mTotal, kBarWidth).c_str(), line.c_str());
    else
        std::fprintf(mpOut, "%s\n", line.c_str());
    mbBar = mbTerminal;
    std::fflush(mpOut);
}

void FilmProgress_cls::ClearBar() {
    if (!mpOut || !mbBar) return;
    mbBar = false;
    std::fputs("\r\033[K", mpOut);
    std::fflush(mpOut);
}

void FilmProgress_cls::Say(const std::string& text) {
    ClearBar();
    if (!mpOut) return;
    std::fprintf(mpOut, "%s\n", text.c_str());
    std::fflush(mpOut);
}
