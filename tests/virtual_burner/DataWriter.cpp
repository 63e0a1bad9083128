#include "DataWriter.h"

IUnknown* MakeDataWriter() {
    return new DataWriter;
}
