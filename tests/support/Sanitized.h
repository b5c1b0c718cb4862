// Whether the program is built with a sanitizer, whose frames and blocks are several times as large and whose allocator
// cannot be replaced.
#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define QV_TEST_SANITIZED 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QV_TEST_SANITIZED 1
#endif
#ifndef QV_TEST_SANITIZED
#define QV_TEST_SANITIZED 0
#endif

// Whether lines and branches are counted, so that the libraries are several times slower. Set by the build.
#ifndef QV_TEST_COUNTED
#define QV_TEST_COUNTED 0
#endif
