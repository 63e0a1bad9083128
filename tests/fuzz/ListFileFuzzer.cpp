// A predefined set's list file: whatever it names, each row has its record in the collection, also after the set was
// taken away again.
#include "Require.h"

#include "selection/PredefinedSets.h"
#include "support/FakeMachine.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t sizeBytes) {
    FakeMachine machine;
    machine.files.AddFile(L"C:\\Data\\Rep1.txt", "one");
    machine.files.AddFile(L"C:\\Data\\a.pst", "store");
    machine.files.AddFile(L"C:\\Data\\Rep\\b.txt", "two");
    machine.files.AddFile(L"C:\\users\\agent\\Desktop\\c.txt", "three");
    const std::wstring list = L"C:\\Valcoreaux\\backup\\Fichierlst\\Medium\\vexal.lst";
    machine.files.AddFile(list, std::string(reinterpret_cast<const char*>(data), sizeBytes));

    SelectionContent content;
    content.collection = std::make_shared<clsColFileInfo>(machine.app);
    LongWork work(machine.app, [] {});
    LeftOutItems leftOut(machine.app);
    PredefinedSets sets(machine.app, content, work, leftOut);
    sets.RemplirArray(list, 0);
    Require(content.rows.Count() == content.collection->Count());
    sets.ViderArray(list);
    Require(content.rows.Count() == content.collection->Count());
    return 0;
}
