// What every program of this house sets up first, before the hub is made.
#pragma once

class wxLocale;

/// Signals of writes that fail, language (English where not `bTranslated`), numbers that never follow the
/// locale, image formats.
void SetUpApp(wxLocale* pLocale, bool bTranslated);
