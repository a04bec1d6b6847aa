#include "BOND/PairMessages.h"

#include <wx/intl.h>

#include "BOND/clsPairFinder.h"

wxString GetPairMessage(PairEnd end, size_t most) {
    switch (end) {
    case PairEnd::TooMany:
        return wxString::Format(
            _("The distances make more than %llu sticks; none is drawn. Choose shorter ones."),
            static_cast<unsigned long long>(most));
    case PairEnd::NoMemory:
        return _("There isn't enough memory for the sticks; none is drawn. Choose shorter distances.");
    default:
        return {};
    }
}
