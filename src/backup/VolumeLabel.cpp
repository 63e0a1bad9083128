#include "backup/VolumeLabel.h"

#include "core/Languages.h"
#include "core/NumberFormat.h"
#include "platform/Clock.h"
#include "platform/Locale.h"

std::wstring DefaultVolumeLabel(const Application& app) {
    const LocalTime today = app.machine.clock->Now();
    const std::wstring month = app.machine.locale->AbbreviatedMonth(today.month);
    const std::wstring day = FormatNumber(today.day, L"00", L"");
    const std::wstring year = FormatNumber(today.year, L"0000", L"");
    return LanguageOf(app).isDayBeforeMonth ? day + L" " + month + L", " + year : month + L" " + day + L", " + year;
}
