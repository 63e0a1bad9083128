#include "archive/PassingSecret.h"

void Forget(std::wstring& secret) {
    for (volatile wchar_t& character : secret) character = L'\0';
    secret.clear();
}
