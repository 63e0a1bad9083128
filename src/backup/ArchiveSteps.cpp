#include "backup/ArchiveSteps.h"

#include "selection/clsColFileInfo.h"

#include <utility>

ArchiveSteps::ArchiveSteps(Application& app, Window window) : list_(app), copier_(app), window_(std::move(window)) {}

std::int32_t ArchiveSteps::SelectedCount() const {
    return window_.selection()->Count();
}

void ArchiveSteps::EnregistrerListeFichiers() {
    list_.EnregistrerListeFichiers(*window_.selection(), window_.view.Display().Step());
}

bool ArchiveSteps::CopierListeFichiers() {
    return copier_.CopierListeFichiers(*window_.selection(), window_.view.Display().Total(), window_.view);
}
