/**
 * How a host and the library are compiled to fit together: calling convention, linkage, and the
 * named fields that overlay a record's bytes.
 */
#ifndef HUNDREDWEIGHT_ABI_H
#define HUNDREDWEIGHT_ABI_H

/** Calling convention of every exported function and of every partner library's entry point:
 *  stdcall on 32-bit Windows, the platform's own elsewhere. */
#if defined(_WIN32) && !defined(_WIN64)
#define HWT_CALL __stdcall
#else
#define HWT_CALL
#endif

/** Linkage of an exported function. On Windows the export list does the exporting. */
#if defined(_WIN32)
#define HWT_API
#else
#define HWT_API __attribute__((visibility("default")))
#endif

/** Introduces an unnamed structure that overlays a record's bytes with its named fields. */
#if defined(__GNUC__)
#define HWT_OVERLAY __extension__
#else
#define HWT_OVERLAY
#endif

#endif
