#include "GtkWords.h"

#include <glib.h>

namespace {

std::vector<std::string>& Words() {
    static std::vector<std::string> sWords;
    return sWords;
}

std::string FieldOf(const GLogField* fields, gsize count, const char* key) {
    for (gsize i = 0; i < count; ++i)
        if (g_strcmp0(fields[i].key, key) == 0 && fields[i].value) {
            const char* value = static_cast<const char*>(fields[i].value);
            return fields[i].length < 0 ? std::string(value) : std::string(value, gsize(fields[i].length));
        }
    return std::string();
}

GLogWriterOutput Note(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer data) {
    if (level & (G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_ERROR))
        Words().push_back(FieldOf(fields, count, "GLIB_DOMAIN") + ": " + FieldOf(fields, count, "MESSAGE"));
    return g_log_writer_default(level, fields, count, data);
}

} // namespace

void WatchGtkWords() { g_log_set_writer_func(Note, nullptr, nullptr); }

const std::vector<std::string>& GetGtkWords() { return Words(); }
