#include "core/CodePage.h"

#include "core/UserProfileMarker.h"
#include "platform/Text.h"

bool SurvivesControlFile(std::wstring_view path, std::wstring_view profileFolder) {
    const std::wstring written = WithProfileMarker(path, profileFolder);
    return FromAnsi(ToAnsi(written)) == written;
}
