#pragma once
// The shared vocabulary of the installation: sources, presets, USB command and notification codes,
// device error codes, device and keypad kinds. Value names are written to files and shown in
// traces, so their spelling and order are part of the format: never reorder or rename them.

#include <QObject>

#include <NorvaGlobal/EnumSet.h>

#include <array>
#include <cstdint>

namespace norva {
inline namespace NorvaGlobal {
Q_NAMESPACE

// The value lists read as the tables they are.
// clang-format off

// The first eight names are deliberately not in numeric order.
enum TSource : std::uint8_t {
  S5, S6, S7, S4, S8, S1, S2, S3, S9, S10, S11, S12, S13, S14, S15, S16,
  SourceReserved1, SourceReserved2, SourceMediaPlayer, SourceUnknown
};
Q_ENUM_NS(TSource)

// Ordinal = the command code sent to a device.
enum TUSBCommand : std::uint8_t {
  usb_no_command, usb_send_object, usb_receive_object, usb_delete_object, usb_bulk_erase,
  usb_enumerate_objects, usb_enumerate_fragments, usb_fetch_system_info, usb_reserved,
  usb_progress_info, usb_delete_all, usb_memory_test, usb_set_usb_mode, usb_read_log, usb_log_data,
  usb_hash_object, usb_norva_cmd_num_bytes, usb_execute_object, usb_execute_object_repeat,
  usb_select_partition, usb_select_learn_ir_mode, usb_write_setting, usb_read_setting, usb_closing
};
Q_ENUM_NS(TUSBCommand)

// The state of the one USB conversation in progress.
enum TUSBCommandStatus : std::uint8_t {
  NoUSBCommand, EnumeratingObjects, EndEnumeratingObjects, EnumeratingFragments,
  EndEnumeratingFragments, DownloadObject_status, DownloadObject_header, DownloadObject_data,
  DownloadObjectName_status, DownloadObjectName_header, DownloadObjectName_data, UploadingObject,
  DeletingObject, FetchingDeviceInfo, SelectingPartition, SelectingIRLearnMode, ErasingAll,
  MemoryTest, ImageDownloadObject_status, ImageDownloadObject_header, ImageDownloadObject_data,
  ImageDownloadNext
};
Q_ENUM_NS(TUSBCommandStatus)

enum TUSBCommandResult : std::uint8_t { USBCommand_Success, USBCommand_Failure, USBCommand_Cancel };
Q_ENUM_NS(TUSBCommandResult)

// The first byte of a frame on the USB notification channel.
enum TUSBNotification : std::uint8_t {
  usb_no_notification, usb_norva_command_old, usb_log_event_old, usb_ir_learn_event,
  usb_norva_command, usb_log_event
};
Q_ENUM_NS(TUSBNotification)

// Device error codes; the unused placeholders keep the device's numbering.
enum TError : std::uint8_t {
  errNoError, errNoAck, errSCLstucklow, errSDAstucklow, errBusNotFree, errInternalOverflow,
  errBufferOverflow, errReceiveAborted, errBusReceiveError, err_unused_2, err_unused_3,
  err_unused_4, err_unused_5, err_unused_6, err_unused_7, err_unused_8, errFrequencyError,
  errTooManyPeriodLengths, errStreamTooLong, errCompressedStreamTooLong, err_unused_9,
  err_unused_10, err_unused_11, err_unused_12, errEEPROMFault, errEEPROMEraseFault, errEEPROMFull
};
Q_ENUM_NS(TError)

enum TSoundPurpose : std::uint8_t { sound_purpose_none, sound_1, sound_2, sound_3, sound_4 };
Q_ENUM_NS(TSoundPurpose)

enum TPreset : std::uint8_t {
  PresetDefault, PresetPagePreset, Preset1, Preset2, Preset3, Preset4, Preset5, Preset6, Preset7,
  Preset8, Preset9, Preset10, Preset11, Preset12, Preset13, Preset14
};
Q_ENUM_NS(TPreset)

enum TNorvaProcessMessage : std::uint8_t {
  ProcessAnnounce, ProcessAnnounceQuery, ProcessUnannounce, ProcessFocused, ProcessUSBConnect
};
Q_ENUM_NS(TNorvaProcessMessage)

enum TDeviceType : std::uint8_t { AmplifierDevice, KeypadDevice, RemoteControlDevice, VideoSwitchDevice };
Q_ENUM_NS(TDeviceType)

enum TKeypadType : std::uint8_t { Lumi, Lumo, NvWk2, NvWk3, NvWk4 };
Q_ENUM_NS(TKeypadType)

// clang-format on

}  // namespace NorvaGlobal

// Zones 0 to 95: three banks of 32.
using TZone = std::uint8_t;
inline constexpr TZone MinZone = 0;
inline constexpr TZone MaxZone = 95;
inline constexpr int ZoneCount = 96;

// -1 means no zone.
using TOptionalZone = std::int8_t;
inline constexpr TOptionalZone NoZone = -1;

// The twelve sources with physical inputs: the subrange S5 (ordinal 0) to S12 (ordinal 11).
using TPhysicalSource = TSource;
inline constexpr TPhysicalSource FirstPhysicalSource = S5;
inline constexpr TPhysicalSource LastPhysicalSource = S12;

inline constexpr int SourceCount = 20;

using TSourceSet = TEnumSet<TSource, SourceCount>;
using TPresetSet = TEnumSet<TPreset, 16>;
using TZoneSet = TEnumSet<TZone, ZoneCount>;
// PCM sample formats: no device format names its bits yet, so the set stays opaque.
using TPCMFormats = TEnumSet<std::uint8_t, 32>;

using TSourceLabels = std::array<QString, SourceCount>;

struct TKeyPressInfo {
  std::uint8_t KeyIndex = 0;  // the key on the keypad
  std::uint8_t Repeats = 0;
  std::uint16_t Duration = 0;
};
static_assert(sizeof(TKeyPressInfo) == 4);

}  // namespace norva
