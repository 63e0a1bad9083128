#include "core/Medium.h"
#include "resources/TextId.h"

TextId MediumLabelId(Medium medium) {
    switch (medium) {
    case Medium::Cd:
        return TextId::CdLabel;
    case Medium::Dvd:
        return TextId::DvdLabel;
    case Medium::RemovableDisk:
        return TextId::RemovableDiskLabel;
    case Medium::ExternalDisk:
        return TextId::ExternalDiskLabel;
    }
    return TextId::None;
}
