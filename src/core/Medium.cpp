#include "core/Medium.h"

int MediumLabelId(Medium medium) {
    switch (medium) {
    case Medium::Cd:
        return 136;
    case Medium::Dvd:
        return 137;
    case Medium::RemovableDisk:
        return 138;
    case Medium::ExternalDisk:
        return 172;
    }
    return 0;
}
