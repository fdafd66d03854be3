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
    QRVL_ERROR_ARGUMENT = 1,  /* an argument is null that must not be, or not valid */
    QRVL_ERROR_NOT_FOUND = 2, /* no such key, value or registration */
    /* The value was accepted but cannot be written to disk; it is kept in memory and written as soon as possible. */
    QRVL_ERROR_STORE = 3,
    QRVL_ERROR_NO_DEVICE = 4, /* no such modem is attached; of QRVL_DevSrv_GetImsiInfo(): or it has no SIM */
    QRVL_ERROR_LIMIT = 5,     /* the list of callbacks is full, or too many requests are under way */

    /* Results of requests, see below. */
    QRVL_ERROR_BUSY = 6,         /* a request of this kind is under way for the modem */
    QRVL_ERROR_NO_SIM = 7,       /* the modem has no SIM, or cannot read it */
    QRVL_ERROR_LOCKED = 8,       /* the SIM must be unlocked first */
    QRVL_ERROR_WRONG_CODE = 9,   /* the PIN or PUK is wrong; the status values say how many tries are left */
    QRVL_ERROR_BLOCKED = 10,     /* no tries left: the SIM asks for its PUK, or can no longer be used */
    QRVL_ERROR_NO_COVERAGE = 11, /* the modem is not registered in a network */
    QRVL_ERROR_REFUSED = 12,     /* the network refused */
    QRVL_ERROR_ACCESS_POINT =
        13, /* the access point, user or password is wrong, or none is known for the network */
    QRVL_ERROR_ROAMING = 14,   /* the modem is roaming, which QRVL_CONNECT_HOME_ONLY excludes */
    QRVL_ERROR_TIMEOUT = 15,   /* the modem or the network did not answer */
    QRVL_ERROR_CANCELLED = 16, /* another request or program ended it */
    QRVL_ERROR_SERVICE = 17, /* a service of the system is missing; status values of QRVL_SERVICE say which */
    QRVL_ERROR_PERMISSION = 18,  /* the system does not allow this user to do it */
    QRVL_ERROR_FULL = 19,        /* the memory for messages is full */
    QRVL_ERROR_UNSUPPORTED = 20, /* this modem cannot do it */
    QRVL_ERROR_FAILED = 21,      /* another reason, which is in the log */
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
    QRVL_EVENT_DEV_REQUEST = 6613,        /* a request has ended; data is a QRVL_RequestEnd */
};

/* One change may cause several events, each once at most, in this order:
 *
 *   QRVL_EVENT_DEV_DEVICE_INVALID   available modems were removed, or modems have failed
 *   QRVL_EVENT_DEV_REJECT           modems were rejected; if they were available, no other event reports their loss
 *   QRVL_EVENT_DEV_DETECTED         the available modems differ, or QRVL_DevSrv_StartDetect() was called
 *   QRVL_EVENT_DEV_STATUS, QRVL_EVENT_DEV_MESSAGES   modems that stay available, or the service, have new values
 *   QRVL_EVENT_DEV_REQUEST          requests have ended; one event for each
 *
 * During all of them QRVL_DevSrv_GetAvailableDeviceList() and QRVL_DevSrv_GetStatusValue() already return the new
 * state. Growing byte counters cause a QRVL_EVENT_DEV_STATUS once a second, but only if one was read since the last. */

/* Receives a device event, on a thread of the service. `data` is a const QRVL_RequestEnd* for QRVL_EVENT_DEV_REQUEST,
 * valid until the callback returns, and null for all other events. Return 1; the result is ignored. All operations of
 * this interface may be called. Return soon: other events wait meanwhile. */
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
#define QRVL_CUSTOMIZE_NAME_COMMON "common" /* the customisation without an operator's changes */
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

/* Fills the list with the attached modems that were not rejected and have not failed, QRVL_MAX_DEVICES at most. A modem
 * without a SIM, or with one that is locked, is available. Unused bytes are zero. Strings that are too long are cut
 * between characters. Without a modem it succeeds with count 0. Results: QRVL_OK, QRVL_ERROR_ARGUMENT. */
QRVL_API long QRVL_DevSrv_GetAvailableDeviceList(QRVL_AvailableDeviceList* list);

/* Fills the list in the same way with the modems that are attached but not available, because they were rejected or have
 * failed; the status value "state" says which. Results: QRVL_OK, QRVL_ERROR_ARGUMENT. */
QRVL_API long QRVL_DevSrv_GetUnusableDeviceList(QRVL_AvailableDeviceList* list);

/* Writes the name of the operator customisation that applies, in UTF-8, into the buffer of QRVL_CUSTOMIZE_NAME_SIZE bytes:
 * that of the first available modem, or QRVL_CUSTOMIZE_NAME_COMMON if it has none or there is no modem. A longer name is
 * cut between characters. Results: QRVL_OK, QRVL_ERROR_ARGUMENT. */
QRVL_API long QRVL_DevSrv_GetCustomizeName(char* name);

/* Writes the IMSI of the first available modem, in UTF-8, into the buffer of QRVL_IMSI_SIZE bytes. Results: QRVL_OK,
 * QRVL_ERROR_NO_DEVICE if there is no modem or it has no SIM, QRVL_ERROR_ARGUMENT. */
QRVL_API long QRVL_DevSrv_GetImsiInfo(char* imsi);

/* ---- Status ---------------------------------------------------------------------------------------------------
 *
 * What a modem reports, as strings by key. Numbers are decimal digits. A key is missing while its value is unknown.
 *
 * The modem:
 *   state               available; rejected; failed
 *   state.reason        why it failed: sim-error, no-profile (an eSIM without one), capabilities, unknown
 *   manufacturer, firmware, imei
 *
 * The SIM:
 *   sim                 ready; absent; pin or puk (it asks for that); blocked (unusable, no PUK tries left); locked
 *                       (another lock); error
 *   pin-tries, puk-tries   how many tries are left
 *   number              the user's own number; often unknown
 *   iccid               the number of the SIM card
 *
 * The network:
 *   registration        home, roaming, searching, denied, idle (not registered, not searching), unknown
 *   network             MCC followed by MNC of the network in which the modem is registered
 *   network-name        its name as the modem reports it; it may be an abbreviation
 *   signal              signal strength, 0 to 100
 *   technology          gsm, gprs, edge, umts, hspa, hspa+, lte, 5g: the fastest in use
 *   network-choice      automatic (the modem chooses the network) or manual. Missing while it is unknown; real modems
 *                       report it only after QRVL_DevSrv_Register().
 *
 * The connection to the Internet:
 *   connection          disconnected, connecting, connected, disconnecting
 *   connection.since    when it was established, in seconds since 1970-01-01T00:00:00Z
 *   connection.address  its IP addresses, separated by spaces
 *   connection.name     its name, if the system keeps connections by name
 *   connection.error    why the latest connection failed or was lost: a number of enum QRVL_Result. Missing while
 *                       connected or connecting, and after a request to disconnect.
 *   received, sent      bytes transferred since the modem was attached or connected
 *   receive-rate, send-rate   bytes per second at present
 *
 * Service codes (USSD):
 *   ussd                idle; active (waiting for the network); reply (the network waits for an answer)
 *
 * Text messages. These keys are missing until the modem has read its messages, so that an empty list means none:
 *   message-storage     where new messages are stored: sim, modem or both
 *   message-storages    where they can be stored, separated by spaces
 *   messages            identifiers of the received messages, oldest first, separated by spaces
 *   sent-messages       identifiers of the messages that were or are being sent, oldest first
 *   message.ID.sender   sender of the received message with that identifier
 *   message.ID.recipient   recipient of a message that was sent
 *   message.ID.time     when it arrived or was sent, in local time: 2024-02-29T17:05:00
 *   message.ID.text     its text
 *   message.ID.state    received; sending, sent, delivered (the recipient has it), failed, or stored (never sent)
 *
 * Calls, which only simulated modems can make:
 *   calls               what becomes of a call: answered, busy, no-answer, refused; none (the modem cannot make calls).
 *                       Missing if calls are answered.
 *
 * Values of the service itself, read with the device QRVL_SERVICE:
 *   backend             simulator (the modems are not real) or modemmanager
 *   problem             why no modem can be found: no-bus (the system has no message bus), no-modemmanager (that
 *                       service is not installed or not running). Missing if there is no problem.
 *   connection-problem  why no modem can be connected: no-bus, no-networkmanager. Missing if there is no problem.
 *   settings-problem    not-writable while the user's settings cannot be written, see QRVL_ERROR_STORE. Missing if there
 *                       is no problem.
 *
 * Other implementations may have more keys and values.
 */

#define QRVL_SERVICE 0U

/* Reads a value of the attached modem with this QRVL_Device.id. On success *value is a new buffer, otherwise null.
 * Results: QRVL_OK; QRVL_ERROR_NO_DEVICE if there is no such modem; QRVL_ERROR_NOT_FOUND if the modem does not report the
 * value, for example the network while it is not registered, or if the message has been deleted; QRVL_ERROR_ARGUMENT.
 * Values of messages are read from the SIM, which can take a second each: do not read them on the GUI thread. */
QRVL_API long QRVL_DevSrv_GetStatusValue(uint32_t device, const char16_t* key, char16_t** value);

/* ---- Requests -------------------------------------------------------------------------------------------------
 *
 * What can be asked of an available modem. It may take seconds, so each operation returns at once: QRVL_OK if the request
 * was accepted. Then *request is its number, which is unique as long as the process runs and never 0, and exactly one
 * QRVL_EVENT_DEV_REQUEST with that number reports its end, after the events of the changes that it caused. The number is
 * stored before the event is sent, but the operation may return after it: both happen on different threads.
 *
 * Otherwise there is no such event, and *request is 0. The results are QRVL_ERROR_ARGUMENT, also for values that cannot be
 * valid; QRVL_ERROR_NO_DEVICE; QRVL_ERROR_BUSY; QRVL_ERROR_LIMIT with 64 requests under way for this modem; and those that
 * an operation names.
 *
 * Any request may end with QRVL_ERROR_NO_DEVICE when the modem is removed, or with QRVL_ERROR_NO_SIM, _LOCKED, _TIMEOUT,
 * _CANCELLED, _SERVICE, _PERMISSION, _UNSUPPORTED or _FAILED. Operations name what else can happen. Requests that are under
 * way when the process ends are abandoned; no event reports that.
 *
 * Arguments are copied before an operation returns. PINs, PUKs and passwords are never logged or stored; the service
 * overwrites its copies when the request has ended, and the caller should do the same. */

/* The end of a request. */
typedef struct QRVL_RequestEnd
{
    uint32_t request;     /* the number that the operation returned */
    uint32_t device;      /* the modem */
    int32_t result;       /* enum QRVL_Result */
    uint32_t reserved;    /* 0 */
    const char16_t* text; /* what the operation says, never null */
} QRVL_RequestEnd;

/* How to connect. All strings may be null, which is the same as empty. */
typedef struct QRVL_AccessPoint
{
    const char16_t* name; /* empty: chosen automatically for the SIM; user and password are ignored then */
    const char16_t* user;
    const char16_t* password;
    uint32_t flags;    /* QRVL_CONNECT_... */
    uint32_t reserved; /* 0 */
} QRVL_AccessPoint;

#define QRVL_CONNECT_HOME_ONLY 1U /* not while roaming */

/* Connects the modem to the Internet; `accessPoint` may be null, which is the same as all zero. If it is connected already,
 * also by another program, the request ends with QRVL_OK and changes nothing. While it is under way, "connection" is
 * "connecting". The connection outlives the process. QRVL_ERROR_BUSY also while it is being disconnected. Other ends:
 * QRVL_ERROR_NO_COVERAGE, _REFUSED, _ACCESS_POINT, _ROAMING; "connection.error" has the same value. */
QRVL_API long QRVL_DevSrv_Connect(uint32_t device, const QRVL_AccessPoint* accessPoint, uint32_t* request);

/* Disconnects the modem, whoever connected it, and ends a request to connect with QRVL_ERROR_CANCELLED. If it is not
 * connected, it succeeds. Settings of connections that other programs made are kept. */
QRVL_API long QRVL_DevSrv_Disconnect(uint32_t device, uint32_t* request);

/* Unlocks the SIM. A PIN consists of 4 to 8 digits, everything else is QRVL_ERROR_ARGUMENT and costs no try. Other ends:
 * QRVL_ERROR_WRONG_CODE; QRVL_ERROR_BLOCKED if that was the last try or the SIM asks for its PUK; QRVL_ERROR_NOT_FOUND if
 * it asks for nothing. Values of the SIM, among them QRVL_Device.imsi, may follow the success by some seconds. */
QRVL_API long QRVL_DevSrv_EnterPin(uint32_t device, const char16_t* pin, uint32_t* request);

/* Unlocks a SIM that asks for its PUK, and gives it a new PIN. A PUK consists of 8 digits. Ends as QRVL_DevSrv_EnterPin();
 * QRVL_ERROR_BLOCKED means that the SIM can no longer be used. */
QRVL_API long QRVL_DevSrv_EnterPuk(uint32_t device, const char16_t* puk, const char16_t* newPin,
                                   uint32_t* request);

/* Sends a text message. The recipient is a telephone number: digits, * and #, perhaps after a +; spaces, hyphens and
 * parentheses are ignored. The text is not empty; a long one is sent in parts. It appears among "sent-messages" before the
 * request ends; one that could not be sent stays there with the state "failed". RequestEnd.text is its identifier. Other
 * ends: QRVL_ERROR_NO_COVERAGE, _REFUSED, _FULL. */
QRVL_API long QRVL_DevSrv_SendMessage(uint32_t device, const char16_t* recipient, const char16_t* text,
                                      uint32_t* request);

/* Deletes a received or sent message. Another end: QRVL_ERROR_NOT_FOUND if there is no message with that identifier. */
QRVL_API long QRVL_DevSrv_DeleteMessage(uint32_t device, const char16_t* identifier, uint32_t* request);

/* Sends a service code such as "*100#", or, while "ussd" is "reply", an answer to the network. RequestEnd.text is what the
 * network answers. Other ends: QRVL_ERROR_NO_COVERAGE, _REFUSED (also for unknown codes). */
QRVL_API long QRVL_DevSrv_SendUssd(uint32_t device, const char16_t* text, uint32_t* request);

/* Ends the dialogue with the network; then "ussd" is "idle". A request that waits for the network ends with
 * QRVL_ERROR_CANCELLED. Without a dialogue it succeeds. */
QRVL_API long QRVL_DevSrv_CancelUssd(uint32_t device, uint32_t* request);

/* Looks for networks. That can take minutes, and modems may interrupt their connection meanwhile. RequestEnd.text has a
 * line for each network: its code (MCC and MNC), its state, its technology as in "technology", and its name, separated by
 * tabs. Technology and name may be empty. The state is current, available, forbidden (to this SIM) or unknown. The
 * order means nothing, and a network may appear once for each technology. */
QRVL_API long QRVL_DevSrv_ScanNetworks(uint32_t device, uint32_t* request);

/* Registers the modem in the network with this code, 5 or 6 digits, and only there from now on; if it is null or empty,
 * lets the modem choose again. QRVL_ERROR_BUSY also while networks are looked for. Other ends: QRVL_ERROR_NO_COVERAGE if
 * the network is not there, _REFUSED. Modems may be in no network after a failure. */
QRVL_API long QRVL_DevSrv_Register(uint32_t device, const char16_t* network, uint32_t* request);

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
static_assert(offsetof(QRVL_RequestEnd, text) == 16 && offsetof(QRVL_AccessPoint, flags) == 3 * sizeof(void*),
              "fixed offset");
#endif

#endif
