#include "InformationWindow.h"

#include "Picture.h"
#include "backup/forms/frmBackupIds.h"
#include "discutil/forms/frmInfoDisqueIds.h"

namespace kit {

std::string InformationPicture(Program& program, HWND backup) {
    program.Press(backup, IDC_cmdInfoDisque);
    const HWND information = program.Window({L"frmInfoDisque", IDC_cmdRafraichir});
    std::string picture = PictureOf(information);
    program.Press(information, IDC_cmdOK);
    program.Wait(L"the end of the information window", [&] { return !IsWindow(information); });
    return picture;
}

} // namespace kit
