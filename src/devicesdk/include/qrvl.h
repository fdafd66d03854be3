/*
 * The device service: modems, SIM data and settings behind one C interface.
 *
 * Texts are UTF-16 with a terminating zero, except in fixed 8-bit buffers, whose encoding is named at each.
 * Every operation returns QRVL_OK (0) on success and another code of enum QRVL_Result otherwise. All
 * operations may be called from any thread. Text buffers that the service hands out were allocated with C++
 * `new char16_t[]`; the caller owns them and releases them with `delete[]`.
 *
 * The core library uses nothing but this header: another library with the same operations can take the place
 * of this one at link time.
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
    QRVL_ERROR_ARGUMENT = 1,  /* a null pointer where a value is needed */
    QRVL_ERROR_NOT_FOUND = 2, /* no such key, value or registration */
    /* The value was taken but cannot be written to disk at present; it is kept in memory and written as soon as that
     * works again. */
    QRVL_ERROR_STORE = 3,
    QRVL_ERROR_NO_DEVICE = 4, /* no such modem is attached, or it has no SIM */
    QRVL_ERROR_LIMIT = 5,     /* no room for another callback */
};

/* ---- Settings ------------------------------------------------------------------------------------------------
 *
 * A value is addressed by a section and a key, compared with exact case; any UTF-16 text without a zero
 * character is a valid section, key or value and survives a round trip, unpaired surrogates and the empty
 * text included. There are three views: the installation's defaults (an INI file that the operator ships,
 * never written), the user's store (written), and the merged view (the user's value, else the default). A
 * value that another process wrote becomes visible within a second.
 */

/* Reads the merged view. *value receives a buffer of its own on success and null otherwise. */
QRVL_API long QRVL_GetSettings(const char16_t* section, const char16_t* key, char16_t** value);

/* Reads the user's store alone. */
QRVL_API long QRVL_GetUserSettings(const char16_t* section, const char16_t* key, char16_t** value);

/* Reads the installation's defaults alone. */
QRVL_API long QRVL_GetIniSettings(const char16_t* section, const char16_t* key, char16_t** value);

/* Writes to the user's store. The value is visible to this process at once and is on disk shortly afterwards;
 * writes that come in a row share one flush. A crash leaves the old or the new value, never a broken file,
 * and two processes do not lose each other's writes. */
QRVL_API long QRVL_SetSettings(const char16_t* section, const char16_t* key, const char16_t* value);

/* ---- Device events -------------------------------------------------------------------------------------------- */

enum QRVL_Event {
    QRVL_EVENT_DEV_REJECT = 6016,         /* a modem was refused, for instance by its operator lock */
    QRVL_EVENT_DEV_DEVICE_INVALID = 6601, /* the modem went away or cannot be used */
    QRVL_EVENT_DEV_DETECTED = 6606,       /* the set of available modems was determined or has changed */
    QRVL_EVENT_DEV_STATUS = 6611,         /* an available modem has other status values */
    QRVL_EVENT_DEV_MESSAGES = 6612,       /* text messages of an available modem came, went or changed */
};

/* One change may cause several events, each at most once, in this order: QRVL_EVENT_DEV_DEVICE_INVALID when available
 * modems have gone, QRVL_EVENT_DEV_REJECT when modems were refused (also ones that were available: no other
 * event says that these have gone), then QRVL_EVENT_DEV_DETECTED when the available set differs, and the
 * other two when modems that were available before have new values. During all of them the list of available
 * devices already holds the new set, and the values are the new ones. */

/* Receives a device event on the service's own thread. `data` is reserved and null. The result is ignored; return
 * 1. A callback may call every operation of this interface. */
typedef int (*QRVL_DevCallback)(int type, void* data);

/* Two lists of callbacks, 32 places each. A callback that is in both gets every event once. Registering one that is
 * already registered is good and changes nothing. */
QRVL_API long QRVL_DevSrv_RegisterDevInitEventCallback(QRVL_DevCallback callback);
QRVL_API long QRVL_DevSrv_RegisterDevMgrCallback(QRVL_DevCallback callback);

/* Remove a registration; QRVL_ERROR_NOT_FOUND when there is none. Once the call has returned the callback is not
 * running on another thread and will not be called through this list again. */
QRVL_API long QRVL_DevSrv_UnRegisterDevInitEventCallback(QRVL_DevCallback callback);
QRVL_API long QRVL_DevSrv_UnRegisterDevMgrCallback(QRVL_DevCallback callback);

/* Asks the service to look for modems now. Returns at once; when it has looked, about 300 ms later, a
 * QRVL_EVENT_DEV_DETECTED tells the outcome, also when nothing has changed or no modem is there. Calls that
 * come while the service is about to look share one more look. */
QRVL_API long QRVL_DevSrv_StartDetect(void);

/* ---- Devices -------------------------------------------------------------------------------------------------- */

#define QRVL_MAX_DEVICES 16
#define QRVL_DEVICE_NAME_SIZE 256
#define QRVL_CUSTOMIZE_NAME_SIZE 256
#define QRVL_IMSI_SIZE 36
#define QRVL_GID_SIZE 36
#define QRVL_AVAILABLE_DEVICE_LIST_SIZE 8708

/* One modem; texts are zero-terminated and in the local code page. */
typedef struct QRVL_Device
{
    uint32_t id;                      /* number of the modem, unique while the service runs */
    uint32_t flags;                   /* reserved, 0 */
    char name[QRVL_DEVICE_NAME_SIZE]; /* model name: what device customisation goes by */
    char imsi[QRVL_IMSI_SIZE];        /* empty without a SIM */
    char gid[QRVL_GID_SIZE];          /* group identifier of the SIM; empty when it has none */
    char customizeName[64];           /* operator customisation the modem was made for; may be empty */
    char port[64];                    /* where it is attached */
    uint8_t reserved[80];
} QRVL_Device;

/* The available-device list. */
typedef struct QRVL_AvailableDeviceList
{
    uint32_t count; /* number of devices that are filled */
    QRVL_Device devices[QRVL_MAX_DEVICES];
} QRVL_AvailableDeviceList;

/* Fills the list with the modems that are attached and accepted, QRVL_MAX_DEVICES at most; bytes that hold nothing are
 * zero. Texts that are too long are cut at a character border. No modem is a success with count 0. */
QRVL_API long QRVL_DevSrv_GetAvailableDeviceList(QRVL_AvailableDeviceList* list);

/* The operator customisation name of the first available modem, UTF-8, cut to the buffer's
 * QRVL_CUSTOMIZE_NAME_SIZE bytes at a character border. */
QRVL_API long QRVL_DevSrv_GetCustomizeName(char* name);

/* The IMSI of the first available modem, UTF-8, into a buffer of QRVL_IMSI_SIZE bytes. */
QRVL_API long QRVL_DevSrv_GetImsiInfo(char* imsi);

/* ---- Status ---------------------------------------------------------------------------------------------------
 *
 * What a modem reports while it works, as texts by key. Numbers are decimal digits.
 *
 *   network             MCC and MNC of the network that the modem is registered in, in one text
 *   signal              strength of the signal, 0 to 100
 *   received, sent      bytes transferred since the modem was attached
 *   receive-rate, send-rate   bytes per second at present
 *   messages            identifiers of the text messages on the SIM, oldest first, with a blank between them
 *   message.ID.sender   who sent the message with that identifier
 *   message.ID.time     when it came, in local time: 2024-02-29T17:05:00
 *   message.ID.text     what it says
 *
 * Other services may know further keys.
 */

/* Reads a value of the available modem whose QRVL_Device.id is given. *value receives a buffer of its own on success and
 * null otherwise: QRVL_ERROR_NO_DEVICE without such a modem, QRVL_ERROR_NOT_FOUND when it does not report the
 * value, for instance without a network, or when the message has gone meanwhile. Values of messages are read
 * from the SIM, which can take a second each: not on the thread of a user interface. */
QRVL_API long QRVL_DevSrv_GetStatusValue(uint32_t device, const char16_t* key, char16_t** value);

#ifdef __cplusplus
} /* extern "C" */

static_assert(sizeof(char16_t) == 2, "texts are UTF-16; on Windows the same bits as wchar_t");
static_assert(sizeof(QRVL_AvailableDeviceList) == QRVL_AVAILABLE_DEVICE_LIST_SIZE, "fixed record size");
static_assert(offsetof(QRVL_AvailableDeviceList, count) == 0, "fixed offset");
static_assert(offsetof(QRVL_AvailableDeviceList, devices) + offsetof(QRVL_Device, name) == 12,
              "fixed offset");
static_assert(sizeof(QRVL_Device) == 544 && offsetof(QRVL_Device, imsi) == 264 &&
                  offsetof(QRVL_Device, gid) == 300,
              "fixed offset");
#endif

#endif
