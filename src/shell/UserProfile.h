#pragma once

class Application;

/// Reads the user's profile folder from the system again into `strProfilUtilisateur`, and its last part into
/// `strNomUtilisateur`; both become empty when it cannot be read.
void LireProfilUtilisateur(Application& app);
