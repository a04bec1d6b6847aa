// What the toolkit complains about on standard error.
#pragma once

#include <string>
#include <vector>

/// Begin to note warnings and worse of GTK and its kin; they are printed as before. Once a process, before
/// the toolkit starts.
void WatchGtkWords();
/// "domain: message", in order.
const std::vector<std::string>& GetGtkWords();
