/*
 * The device service: modems, SIM data and settings behind a C interface.
 *
 * Strings are UTF-16 with a terminating zero, except in the fixed 8-bit buffers, whose encoding is stated for each.
 * Every operation returns QRVL_OK (0) on success and another code of enum QRVL_Result otherwise. Operations may be
 * called from any thread; they are safe to call concurrently. String buffers that the service returns were allocated
 * with C++ `new char16_t[]`: the caller owns them and releases them with `delete[]`.
 *
 * The core library uses only this header. To replace the service, link another library with the same operations.
 */
#ifndef QRVL_H
#define QRVL_H

#include <stddef.h>
#include <stdint.h>
#ifndef __cplusplus
#include <uchar.h>
#endif

#if defined(_WIN32)
#if defined(QRVL_BUILD)
#define QRVL_API __declspec(dllexport)
#else
#define QRVL_API __declspec(dllimport)
#endif
#else
#define QRVL_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Results. */
enum QRVL_Result {
    QRVL_OK = 0,
    QRVL_ERROR_ARGUMENT = 1,  /* a pointer is null that must not be */
    QRVL_ERROR_NOT_FOUND = 2, /* no such key, value or registration */
    /* The value was accepted but cannot be written to disk; it is kept in memory and written as soon as possible. */
    QRVL_ERROR_STORE = 3,
    QRVL_ERROR_NO_DEVICE = 4, /* no such modem is attached, or it has no SIM */
    QRVL_ERROR_LIMIT = 5,     /* the list of callbacks is full */
};

/* ---- Settings ------------------------------------------------------------------------------------------------
 *
 * A value is identified by a section and a key. Both are case-sensitive. Sections, keys and values may be any UTF-16
 * string without a zero character, including the empty string and unpaired surrogates.
 *
 * There are three views: the installation's defaults (an INI file that the operator ships; never written), the user's
 * store (written), and the merged view (the user's value if there is one, otherwise the default). A value that another
 * process writes becomes visible shortly afterwards; on a network drive that can take 30 seconds.
 *
 * Reading is a look-up in memory and does not block on the disk. Results of the three reading operations: QRVL_OK, and
 * *value is a new buffer; QRVL_ERROR_NOT_FOUND or QRVL_ERROR_ARGUMENT, and *value is null.
 */

/* Reads from the merged view. */
QRVL_API long QRVL_GetSettings(const char16_t* section, const char16_t* key, char16_t** value);

/* Reads from the user's store only. */
QRVL_API long QRVL_GetUserSettings(const char16_t* section, const char16_t* key, char16_t** value);

/* Reads from the installation's defaults only. */
QRVL_API long QRVL_GetIniSettings(const char16_t* section, const char16_t* key, char16_t** value);

/* Writes to the user's store. This process sees the new value at once; it is on disk shortly afterwards, written by
 * another thread together with other recent changes. After a crash the file holds the old or the new value and is never
 * damaged. Processes that write at the same time do not lose each other's values. Results: QRVL_OK, QRVL_ERROR_STORE,
 * QRVL_ERROR_ARGUMENT. */
QRVL_API long QRVL_SetSettings(const char16_t* section, const char16_t* key, const char16_t* value);

/* ---- Device events -------------------------------------------------------------------------------------------- */

enum QRVL_Event {
    QRVL_EVENT_DEV_REJECT = 6016,         /* a modem was rejected, for example by its operator lock */
    QRVL_EVENT_DEV_DEVICE_INVALID = 6601, /* a modem was removed or cannot be used */
    QRVL_EVENT_DEV_DETECTED = 6606,       /* the available modems have changed, or were looked for */
    QRVL_EVENT_DEV_STATUS = 6611,         /* status values of an available modem have changed */
    QRVL_EVENT_DEV_MESSAGES = 6612,       /* text messages of an available modem have changed */
};

/* One change may cause several events, each once at most, in this order:
 *
 *   QRVL_EVENT_DEV_DEVICE_INVALID   available modems were removed
 *   QRVL_EVENT_DEV_REJECT           modems were rejected; if they were available, no other event reports their loss
 *   QRVL_EVENT_DEV_DETECTED         the available modems differ, or QRVL_DevSrv_StartDetect() was called
 *   QRVL_EVENT_DEV_STATUS, QRVL_EVENT_DEV_MESSAGES   modems that stay available have new values
 *
 * During all of them QRVL_DevSrv_GetAvailableDeviceList() and QRVL_DevSrv_GetStatusValue() already return the new
 * state. Growing byte counters cause a QRVL_EVENT_DEV_STATUS once a second, but only if one was read since the last. */

/* Receives a device event, on a thread of the service. `data` is reserved and null. Return 1; the result is ignored. All
 * operations of this interface may be called. Return soon: other events wait meanwhile. */
typedef int (*QRVL_DevCallback)(int type, void* data);

/* There are two lists of callbacks with 32 places each. A callback that is in both lists receives each event once. Adding
 * a callback to a list that already holds it succeeds and changes nothing. Results: QRVL_OK, QRVL_ERROR_LIMIT,
 * QRVL_ERROR_ARGUMENT. */
QRVL_API long QRVL_DevSrv_RegisterDevInitEventCallback(QRVL_DevCallback callback);
QRVL_API long QRVL_DevSrv_RegisterDevMgrCallback(QRVL_DevCallback callback);

/* Remove a callback from a list; it is not called through this list again. If the callback is running on another thread,
 * the operation waits until it returns, so do not hold a lock that the callback needs. During a callback these do not
 * wait. Results: QRVL_OK, QRVL_ERROR_NOT_FOUND if the list does not hold the callback, QRVL_ERROR_ARGUMENT. */
QRVL_API long QRVL_DevSrv_UnRegisterDevInitEventCallback(QRVL_DevCallback callback);
QRVL_API long QRVL_DevSrv_UnRegisterDevMgrCallback(QRVL_DevCallback callback);

/* Looks for modems now. Returns at once. About 300 ms later a QRVL_EVENT_DEV_DETECTED reports the outcome, even if nothing
 * has changed or there is no modem. Further calls in the meantime share one more look. Modems that are attached later
 * are reported without this call. Always returns QRVL_OK. */
QRVL_API long QRVL_DevSrv_StartDetect(void);

/* ---- Devices -------------------------------------------------------------------------------------------------- */

#define QRVL_MAX_DEVICES 16
#define QRVL_DEVICE_NAME_SIZE 256
#define QRVL_CUSTOMIZE_NAME_SIZE 256
#define QRVL_IMSI_SIZE 36
#define QRVL_GID_SIZE 36
#define QRVL_AVAILABLE_DEVICE_LIST_SIZE 8708

/* A modem. Strings are zero-terminated and in the local code page. */
typedef struct QRVL_Device
{
    uint32_t id;                      /* identifies the modem as long as the process runs */
    uint32_t flags;                   /* reserved, 0 */
    char name[QRVL_DEVICE_NAME_SIZE]; /* model name; selects the device customisation */
    char imsi[QRVL_IMSI_SIZE];        /* empty without a SIM */
    char gid[QRVL_GID_SIZE];          /* group identifier of the SIM; empty if it has none */
    char customizeName[64];           /* operator customisation of the modem; may be empty */
    char port[64];                    /* where the modem is attached */
    uint8_t reserved[80];
} QRVL_Device;

/* The available-device list. */
typedef struct QRVL_AvailableDeviceList
{
    uint32_t count; /* number of devices that follow */
    QRVL_Device devices[QRVL_MAX_DEVICES];
} QRVL_AvailableDeviceList;

/* Fills the list with the attached modems that were not rejected, QRVL_MAX_DEVICES at most. Unused bytes are zero.
 * Strings that are too long are cut between characters. Without a modem it succeeds with count 0. Results: QRVL_OK,
 * QRVL_ERROR_ARGUMENT. */
QRVL_API long QRVL_DevSrv_GetAvailableDeviceList(QRVL_AvailableDeviceList* list);

/* Writes the operator customisation name of the first available modem, in UTF-8, into the buffer of
 * QRVL_CUSTOMIZE_NAME_SIZE bytes; a longer name is cut between characters. The buffer is empty if the modem has none.
 * Results: QRVL_OK, QRVL_ERROR_NO_DEVICE, QRVL_ERROR_ARGUMENT. */
QRVL_API long QRVL_DevSrv_GetCustomizeName(char* name);

/* Writes the IMSI of the first available modem, in UTF-8, into the buffer of QRVL_IMSI_SIZE bytes. Results: QRVL_OK,
 * QRVL_ERROR_NO_DEVICE if there is no modem or it has no SIM, QRVL_ERROR_ARGUMENT. */
QRVL_API long QRVL_DevSrv_GetImsiInfo(char* imsi);

/* ---- Status ---------------------------------------------------------------------------------------------------
 *
 * What a modem reports while it works, as strings by key. Numbers are decimal digits.
 *
 *   network             MCC followed by MNC of the network in which the modem is registered
 *   signal              signal strength, 0 to 100
 *   received, sent      bytes transferred since the modem was attached
 *   receive-rate, send-rate   bytes per second at present
 *   messages            identifiers of the text messages on the SIM, oldest first, separated by spaces
 *   message.ID.sender   sender of the message with that identifier
 *   message.ID.time     when it arrived, in local time: 2024-02-29T17:05:00
 *   message.ID.text     its text
 *
 * Other implementations may have more keys.
 */

/* Reads a value of the available modem with this QRVL_Device.id. On success *value is a new buffer, otherwise null.
 * Results: QRVL_OK; QRVL_ERROR_NO_DEVICE if there is no such modem; QRVL_ERROR_NOT_FOUND if the modem does not report the
 * value, for example the network while it is not registered, or if the message has been deleted; QRVL_ERROR_ARGUMENT.
 * Values of messages are read from the SIM, which can take a second each: do not read them on the GUI thread. */
QRVL_API long QRVL_DevSrv_GetStatusValue(uint32_t device, const char16_t* key, char16_t** value);

#ifdef __cplusplus
} /* extern "C" */

static_assert(sizeof(char16_t) == 2, "strings are UTF-16, as wchar_t is on Windows");
static_assert(sizeof(QRVL_AvailableDeviceList) == QRVL_AVAILABLE_DEVICE_LIST_SIZE, "fixed record size");
static_assert(offsetof(QRVL_AvailableDeviceList, count) == 0, "fixed offset");
static_assert(offsetof(QRVL_AvailableDeviceList, devices) + offsetof(QRVL_Device, name) == 12,
              "fixed offset");
static_assert(sizeof(QRVL_Device) == 544 && offsetof(QRVL_Device, imsi) == 264 &&
                  offsetof(QRVL_Device, gid) == 300,
              "fixed offset");
#endif

#endif
