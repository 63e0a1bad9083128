// Procedures of the selection that fail only where there is no memory: each reports under the label that users quote.
#include "low_memory/AllocationFailure.h"
#include "support/SelectionBench.h"

#include <gmock/gmock.h>

#include <new>
#include <set>

namespace {

using testing::Contains;

using Labels = std::set<std::wstring>;

constexpr long MostAllocations = 400;

std::wstring LabelIn(const std::wstring& report) {
    const std::wstring before = L" dans la procédure ";
    const std::size_t at = report.find(before);
    if (at == std::wstring::npos) return {};
    const std::size_t begin = at + before.size();
    return report.substr(begin, report.find(L" à la ligne", begin) - begin);
}

/// The labels under which an action on a selection of two files reports while its allocations fail in turn, two at a
/// time: where not even the report of an inner procedure can be made, the one around it reports.
template<typename Action>
Labels Provoked(Action action) {
    Labels labels;
    bool hasHappened = true;
    for (long at = 1; hasHappened && at <= MostAllocations; ++at) {
        SelectionBench bench;
        bench.machine.files.AddSizedFile(L"C:\\Data\\a.txt", 10);
        bench.machine.files.AddSizedFile(L"C:\\Data\\b.txt", 10);
        bench.Add(L"C:\\Data\\a.txt");
        bench.Add(L"C:\\Data\\b.txt");
        {
            const AllocationFailure failure(at, 2);
            try {
                action(bench.list);
            } catch (const std::bad_alloc&) {
                // Around the outermost procedure there is the window's own report.
            }
            hasHappened = failure.HasHappened();
        }
        for (const auto& box : bench.machine.messageBoxes.shown) labels.insert(LabelIn(box.text));
    }
    return labels;
}

TEST(LowMemoryLabels, RemovingARowReportsUnderItsOwn) {
    EXPECT_THAT(Provoked([](SelectionList& list) { list.EffacerFichierListe(0); }),
                Contains(L"EffacerFichierListe, module frmBackupCD"));
}

TEST(LowMemoryLabels, FillingTheListAnewReportsUnderItsOwn) {
    EXPECT_THAT(Provoked([](SelectionList& list) { list.SetArrayFichier(list.ArrayFichier()); }),
                Contains(L"ListeFichiersRemplir, module frmBackupCD"));
}

} // namespace
