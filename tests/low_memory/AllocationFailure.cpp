#include "low_memory/AllocationFailure.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <thread>

namespace {

std::atomic<bool> isArmed = false;
std::atomic<long> allocations = 0;
long first = 0;
long last = 0;
AllocationFailure::Where meant = AllocationFailure::Where::Anywhere;
std::thread::id armingThread;

bool IsMeant() {
    if (meant == AllocationFailure::Where::Anywhere) return true;
    return (std::this_thread::get_id() == armingThread) == (meant == AllocationFailure::Where::OnThisThread);
}

bool MustFail() {
    if (!isArmed || !IsMeant()) return false;
    const long number = ++allocations;
    return number >= first && number <= last;
}

void* Allocate(std::size_t size) {
    if (MustFail()) throw std::bad_alloc();
    void* memory = std::malloc(size != 0 ? size : 1);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

} // namespace

AllocationFailure::AllocationFailure(long at, long count, Where where) {
    allocations = 0;
    first = at;
    last = at + count - 1;
    meant = where;
    armingThread = std::this_thread::get_id();
    isArmed = true;
}

AllocationFailure::~AllocationFailure() {
    isArmed = false;
}

bool AllocationFailure::HasHappened() const {
    return allocations >= first;
}

OutsideTheProgram::OutsideTheProgram() : wasArmed_(isArmed) {
    isArmed = false;
}

OutsideTheProgram::~OutsideTheProgram() {
    isArmed = wasArmed_;
}

void* operator new(std::size_t size) {
    return Allocate(size);
}

void* operator new[](std::size_t size) {
    return Allocate(size);
}

// Memory of these comes back through the same deletes, and a sanitizer holds the two against each other.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return Allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
    return operator new(size, tag);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
