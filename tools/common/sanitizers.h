#pragma once

// Sanitizers have signal stacks and handlers of their own and reserve terabytes of addresses, so
// the tools leave theirs out beside them. GCC tells by a macro, Clang by a feature.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define TOOLS_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define TOOLS_SANITIZED 1
#endif
#endif
#ifndef TOOLS_SANITIZED
#define TOOLS_SANITIZED 0
#endif

#if defined(__SANITIZE_ADDRESS__)
#define TOOLS_ADDRESS_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TOOLS_ADDRESS_SANITIZED 1
#endif
#endif
#ifndef TOOLS_ADDRESS_SANITIZED
#define TOOLS_ADDRESS_SANITIZED 0
#endif
