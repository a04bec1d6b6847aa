// Nothing ends a film early without a status and a reason: it is made in a process of its own, which is
// watched.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

struct FilmFrame_st;

/// What the watched process tells.
enum class GuardWord : char {
    Begun = 'b', ///< frames are being made
    Ended = 'e'  ///< what it ends with now is meant
};

/// Run `film` in a child; the answer is the status to end with. A child that ends without having said
/// GuardWord::Ended (a driver crashed, the system took its memory, a library called exit) is a reason on
/// stderr and FilmStatus::NotOpened, or SomeFailed once frames were begun; then the frames that aren't
/// settled are named. Signals that ask for the end are passed on, and this process ends by the one that its
/// child ended by. Where no child can be made, `film` runs here.
int RunGuarded(const std::function<int()>& film);
void TellGuard(GuardWord word);
/// What is going to be made.
void TellGuardFilm(const std::vector<FilmFrame_st>& film);
/// This one of them stands there whole, or it was told what is wrong with it.
void TellGuardSettled(size_t i);
