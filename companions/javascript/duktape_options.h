/* Duktape's own options, with what lets a run be ended from outside. */
#ifndef VORC_DUKTAPE_OPTIONS_H
#define VORC_DUKTAPE_OPTIONS_H

#include <duk_config.h>

#define DUK_USE_INTERRUPT_COUNTER
#undef DUK_USE_EXEC_TIMEOUT_CHECK
#define DUK_USE_EXEC_TIMEOUT_CHECK(udata) vorc_run_expired(udata)

#ifdef __cplusplus
extern "C"
#endif
    duk_bool_t
    vorc_run_expired(void* session);

#endif
