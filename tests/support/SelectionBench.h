#pragma once

#include "core/Currency.h"
#include "platform/Text.h"
#include "support/FakeMachine.h"
#include "support/SelectionHost.h"

#include <memory>
#include <string>
#include <vector>

/// A selection list on a stand-in workstation, its own or a given one.
struct SelectionBench {
    std::unique_ptr<FakeMachine> ownMachine;
    FakeMachine& machine;
    SelectionHost host{machine.app};
    SelectionScreen screen;
    SelectionList list{machine.app, host, screen};

    SelectionBench() : ownMachine(std::make_unique<FakeMachine>()), machine(*ownMachine) { Connect(); }
    explicit SelectionBench(FakeMachine& given) : machine(given) { Connect(); }

    /// Writes a list file of the program, one entry per line.
    void AddListFile(const std::wstring& name, const std::vector<std::wstring>& entries) {
        std::wstring text;
        for (const std::wstring& entry : entries) text += entry + L"\r\n";
        AddRawListFile(name, ToAnsi(text));
    }
    void AddRawListFile(const std::wstring& name, const std::string& bytes) {
        machine.files.AddFile(machine.app.ListFileFolder() + name, bytes);
    }

    /// The rows as "text|kind|set", set rows marked by "!".
    std::vector<std::wstring> Rows() const {
        std::vector<std::wstring> rows;
        for (std::int32_t at = 0; at < list.RowCount(); ++at) {
            const SelectionRow& row = list.Row(at);
            std::wstring text = (row.color == 255 && row.IsBold() ? L"!" : L"") + row.Text();
            text += row.isFolder ? L"|folder|" : L"|file|";
            if (row.setIndex != NoSet) text += std::to_wstring(row.setIndex);
            rows.push_back(text);
        }
        return rows;
    }
    /// The collection as "path/kind".
    std::vector<std::wstring> Items() const {
        std::vector<std::wstring> items;
        for (const auto& item : *list.ArrayFichier())
            items.push_back(item->strNom + L"/" + std::to_wstring(item->lngType));
        return items;
    }
    /// The space that the collection takes, added up afresh.
    Currency SumOfItems() {
        Currency sum;
        for (const auto& item : *list.ArrayFichier()) sum += list.SpaceOf(item->strNom);
        return sum;
    }
    void Add(const std::wstring& path) { list.AjouterFichRep(path, 0, true); }

  private:
    void Connect() {
        host.spaceOf = [this](const std::wstring& path) { return list.SpaceOf(path); };
    }
};
