/* A small logging interface with a C API, usable from C and C++. */
#ifndef CPPLIB_LOG_H
#define CPPLIB_LOG_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/** How serious a message is. */
typedef enum {
  LOG_DEBUG,   /**< Details for developers. */
  LOG_INFO,    /**< What happens normally. */
  LOG_WARNING, /**< Something to look at. */
  LOG_ERROR    /**< Something failed. */
} log_level;

/** Where messages go, and which of them. */
typedef struct log_sink {
  log_level threshold; /**< Messages below it are dropped. */
  /** Receives each message; @p text ends in a line break. */
  void (*write)(void* context, const char* text, size_t length);
  void* context; /**< Handed to @c write unchanged. */
} log_sink;

/** The largest message, in bytes, the log writes whole. */
#define LOG_MAX_MESSAGE 1024

/** Logs a message with its place in the source. */
#define LOG_AT(sink, level, text) log_write((sink), (level), __FILE__, __LINE__, (text))

/**
 * Writes one message.
 *
 * \param sink where it goes; nothing is written when it is null
 * \param level how serious it is
 * \param file the source file, or null
 * \param line the line in @p file
 * \param text the message, without a line break
 * \return the number of bytes written
 */
size_t log_write(const log_sink* sink, log_level level, const char* file, int line, const char* text);

/** The number of messages written since the program started. */
extern unsigned long log_count;

#ifdef __cplusplus
}
#endif

#endif
