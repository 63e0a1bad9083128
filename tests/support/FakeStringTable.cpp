#include "support/FakeStringTable.h"

#include "platform/RuntimeError.h"

const std::vector<FakeStringTable::Row>& FakeStringTable::Rows() {
    static const std::vector<Row> rows = {
#define STRING(name, id, french, english) {id, L##french, L##english},
#include "resources/Strings.def"
#undef STRING
    };
    return rows;
}

std::wstring FakeStringTable::Load(int id) const {
    if (id != 0 && id == outOfMemoryAt) throw RuntimeError(ErrorNumber::OutOfMemory);
    for (const Row& row : Rows()) {
        if (row.id == id) return row.french;
        if (row.id + 10000 == id) return row.english;
    }
    return {};
}
