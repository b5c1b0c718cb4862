// Running out of memory while a text is read: it is never mistaken for a text that is not JSON, and nothing is lost.
//
// The global allocation functions are replaced, so that a chosen allocation of the calling thread fails (not one that
// may answer null, which callers are ready for). Sanitizers bring their own, hence not under them.
#include <qvpreslayer/JSONSerializer.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define QV_TEST_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QV_TEST_SANITIZED
#endif

#ifndef QV_TEST_SANITIZED

#include <cstdlib>
#include <new>
#include <string>

#include "json/JSONTestSupport.h"

namespace {

thread_local long t_allocationsLeft = -1;  // negative: no allocation fails

// Whether this is the allocation that fails.
bool Fails() {
    if (t_allocationsLeft < 0) {
        return false;
    }
    return t_allocationsLeft-- == 0;
}

void* Allocate(std::size_t bytes) {
    if (Fails()) {
        return nullptr;
    }
    return std::malloc(bytes == 0 ? 1 : bytes);
}

void* AllocateAligned(std::size_t bytes, std::align_val_t alignment) {
    const auto unit = static_cast<std::size_t>(alignment);
    return Fails() ? nullptr : std::aligned_alloc(unit, (bytes + unit - 1) / unit * unit);
}

void* OrThrow(void* memory) {
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

// What reading comes to when one allocation fails: "done" when there are not so many.
std::string OutcomeWhenAllocationFails(const JSONSerializer& json, const TString& text, long number) {
    t_allocationsLeft = number;
    std::string outcome = "done";
    const char* failure = nullptr;
    try {
        json.ToParameters(text);
        failure = t_allocationsLeft < 0 ? "swallowed" : nullptr;
    } catch (const std::bad_alloc&) {
        failure = "out of memory";
    } catch (const ParameterParseException&) {
        failure = "parameter";  // what the registry makes of every failure behind a scalar's look-up
    } catch (const JSONParseException&) {
        failure = "not valid";
    } catch (...) {
        failure = "another failure";
    }
    t_allocationsLeft = -1;
    if (failure != nullptr) {
        outcome = failure;
    }
    return outcome;
}

}  // namespace

// The compiler, inlining one of a pair, takes malloc and free for mismatched with the other.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"

void* operator new(std::size_t bytes) { return OrThrow(Allocate(bytes)); }
void* operator new[](std::size_t bytes) { return OrThrow(Allocate(bytes)); }
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return std::malloc(bytes == 0 ? 1 : bytes); }
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept { return std::malloc(bytes == 0 ? 1 : bytes); }
void* operator new(std::size_t bytes, std::align_val_t alignment) { return OrThrow(AllocateAligned(bytes, alignment)); }
void* operator new[](std::size_t bytes, std::align_val_t alignment) {
    return OrThrow(AllocateAligned(bytes, alignment));
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

TEST(JSONAllocationFailure, IsNeverANotValidText) {
    const ViewRegistry registry;
    const JSONSerializer json(L"view");
    const TString text(
        LR"({"maxCount":1,"text":"a text that is long enough for the heap, and its \"escapes\"",)"
        LR"("intList":[1,[5,4],[]],"textList":["a text that is long enough for the heap",null,[1]],)"
        LR"("myMap":{"k":"v"},"subBag":{"n":1},"myModel":{"aB":1},"items":[{"n":1}],)"
        LR"("byKey":{"a":null,"b":{}},"row":["a"],"rows":[["b"]],"real":0.5,"unsigned":1e2})");
    json.ToParameters(LR"({"maxCount":1,"subBag":{"paramType":"param-type"}})");  // fills the namespaces

    int failures = 0;
    for (long number = 0;; ++number) {
        ASSERT_LT(number, 100000);
        const std::string outcome = OutcomeWhenAllocationFails(json, text, number);
        if (outcome == "done") {
            break;
        }
        ASSERT_TRUE(outcome == "out of memory" || outcome == "parameter") << outcome << " at allocation " << number;
        ++failures;
    }
    EXPECT_GT(failures, 5);
}

#endif
