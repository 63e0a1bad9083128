#include "shell/UserProfile.h"

#include "core/Application.h"
#include "platform/System.h"

void LireProfilUtilisateur(Application& app) {
    app.strProfilUtilisateur = app.machine.system.ProfileFolder();
    app.strNomUtilisateur = app.strProfilUtilisateur.substr(app.strProfilUtilisateur.find_last_of(L'\\') + 1);
}
