#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// The numbers of the controls that Tab visits from the first one on, as the form stands now.
std::vector<int> TabOrder(HWND form);

/// Visible buttons, fields and lists that no Tab leads to; an option is reached when any of its group is.
/// Empty when every one is reached.
std::vector<int> UnreachableControls(HWND form);

/// The access keys, in upper case, that more than one visible control of the form claims. Empty when all differ.
std::wstring AccessKeyClashes(HWND form);

/// The name that a screen reader gives a control: the text of the label (an invisible one will do) or of the frame
/// directly before it. Empty without one.
std::wstring LabelOf(HWND control);

/// Visible fields and lists without a name for a screen reader. Empty when every one has its label.
std::vector<int> UnlabelledFields(HWND form);
