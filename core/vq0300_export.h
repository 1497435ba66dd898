/// @file
/// The one export switch of the library.
///
/// The library is built with hidden visibility: nothing leaves the shared
/// object unless it is marked VQ0300_API. Every public class and free function
/// carries the mark; helpers, private tables and templates instantiated inside
/// the library stay hidden.
#ifndef VQ0300_EXPORT_H
#define VQ0300_EXPORT_H

#if defined(__GNUC__) || defined(__clang__)
#define VQ0300_API __attribute__((visibility("default")))
#else
#define VQ0300_API
#endif

#endif  // VQ0300_EXPORT_H
