#include "backup/SpaceFigures.h"

#include "core/NumberFormat.h"
#include "core/SpaceValues.h"
#include "core/StartUpValues.h"
#include "platform/Locale.h"
#include "resources/TextId.h"

Spaces SpacesOf(const Application& app) {
    return {app.space->requiredSpace, app.space->availableSpace, app.startUp->dblEspaceDisponible};
}

std::wstring SpaceFigure(const Application& app, TextId captionId, double bytes) {
    return app.Text(captionId) + L" " +
           FormatNumber(Megabytes(bytes), MegabytePicture, app.machine.locale->DecimalSeparator()) + L" " +
           app.Text(TextId::BackupUnit);
}

bool FitsMedium(std::int64_t archiveSizeBytes, Currency available) {
    constexpr std::int64_t units = 10000;
    // Whole bytes against a figure with decimals: the part below one byte holds no byte.
    return archiveSizeBytes <= available.TenThousandths() / units;
}
