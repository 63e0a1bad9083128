#include "shell/UserProfile.h"

#include "core/Application.h"
#include "core/UserValues.h"
#include "platform/UserAccount.h"

void LireProfilUtilisateur(Application& app) {
    app.user->strProfilUtilisateur = app.machine.account->ProfileFolder();
    app.user->strNomUtilisateur =
        app.user->strProfilUtilisateur.substr(app.user->strProfilUtilisateur.find_last_of(L'\\') + 1);
}
