#include "core/Languages.h"

#include "core/Application.h"
#include "core/LanguageValues.h"
#include "platform/MessageBoxes.h"
#include "platform/RuntimeError.h"

#include <algorithm>

constexpr std::array<LanguageDescription, 2> Languages{{
    {.textOffset = 0,
     .windowsName = L"français",
     .settingsCode = 20001,
     .guide = L"Copie de Sauvegarde.pdf",
     .documentsFolder = L"Mes Documents",
     .isDayBeforeMonth = true,
     .usbQuestion = L"Un périphérique de masse USB (disque externe et/ou disque amovible) a été détecté.  Désirez-vous "
                    L"l'utiliser pour faire une copie de sécurité ? ",
     .usbQuestionTitle = L"Utilisation d'un périphérique USB pour la prise de copie",
     .usbQuestionBox = box::DefaultButton2 | box::Information | box::YesNo},
    {.textOffset = 10000,
     .windowsName = nullptr,
     .settingsCode = std::nullopt,
     .guide = L"Backup.pdf",
     .documentsFolder = L"My Documents",
     .isDayBeforeMonth = false,
     .usbQuestion =
         L"A mass storage device USB (removable disk and/or external disk) has been detected.  Do you want tu "
         L"use that device to do your backup ? ",
     .usbQuestionTitle = L"Utilization of a USB device for your backup",
     .usbQuestionBox = box::YesNo},
}};

const LanguageDescription& LanguageOf(const Application& app) {
    const auto* const found =
        std::find_if(Languages.begin(), Languages.end(), [&](const LanguageDescription& language) {
            return language.textOffset == app.language->lngLangue;
        });
    if (found == Languages.end()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    return *found;
}
