#pragma once
// The button-class vocabulary: the groups and, for each group that has named values, the
// enumeration of its class values. Value 0 of every group means "no class". Value names are
// written to files and shown to users, so their spelling and order are part of the format:
// never reorder or rename them. The Norva group (0) has no enumeration: its values are the
// keypad firmware's function numbers 0..99.

#include <QObject>

#include <cstdint>

namespace norva {
inline namespace ButtonClasses {
Q_NAMESPACE

// The value lists read as the tables they are.
// clang-format off

enum TButtonClassGroup : std::uint8_t {
  NorvaClassGroup, TransportClassGroup, NumericClassGroup, CursorClassGroup, SystemClassGroup, iPortClassGroup,
  IntegraTunerClassGroup, IntegraReceiverClassGroup, dummy_group_1, dummy_group_2,
  IntegraDVDPlayerClassGroup, ClockClassGroup, VantageLightingClassGroup, DLOClassGroup,
  AutonomicClassGroup, VantageDMMClassGroup, BrioTunerClassGroup, ReQuestClassGroup,
  NorvaAlarmCnfgClassGroup, CBusLightingClassGroup, NvZr900GUIClassGroup, ZoneLinkClassGroup,
  ZoneNameClassGroup, NvZr900ClockClassGroup, NvZr900AlarmClassGroup, DNDClassGroup,
  PresetZonesClassGroup, LuxomLightingClassGroup, GenericAppletClassGroup, NetworkSettingsClassGroup,
  USBNavigationClassGroup
};
Q_ENUM_NS(TButtonClassGroup)

// Group 1, TransportClassGroup.
enum TTransportButtonClass : std::uint8_t {
  ButtonClass_NoTransportClass, ButtonClass_Play, ButtonClass_Stop, ButtonClass_Pause,
  ButtonClass_Rew, ButtonClass_FF, ButtonClass_NextTrack, ButtonClass_PrevTrack,
  ButtonClass_NextDisc, ButtonClass_PrevDisc, ButtonClass_Eject
};
Q_ENUM_NS(TTransportButtonClass)

// Group 2, NumericClassGroup.
enum TNumericButtonClass : std::uint8_t {
  ButtonClass_NoNumericClass, ButtonClass_0, ButtonClass_1, ButtonClass_2, ButtonClass_3,
  ButtonClass_4, ButtonClass_5, ButtonClass_6, ButtonClass_7, ButtonClass_8, ButtonClass_9,
  ButtonClass_10, ButtonClass_Enter1, ButtonClass_reserved1, ButtonClass_reserved2,
  ButtonClass_reserved3, ButtonClass_reserved4, ButtonClass_NextChannel, ButtonClass_PrevChannel
};
Q_ENUM_NS(TNumericButtonClass)

// Group 3, CursorClassGroup.
enum TCursorButtonClass : std::uint8_t {
  ButtonClass_NoCursorClass, ButtonClass_Up, ButtonClass_Down, ButtonClass_Left, ButtonClass_Right,
  ButtonClass_Enter2, ButtonClass_Menu, ButtonClass_Red, ButtonClass_Green, ButtonClass_Yellow,
  ButtonClass_Blue
};
Q_ENUM_NS(TCursorButtonClass)

// Group 4, SystemClassGroup.
enum TSystemButtonClass : std::uint8_t {
  ButtonClass_NoSystemClass, ButtonClass_Standby, ButtonClass_Mute, ButtonClass_VolumeUp,
  ButtonClass_VolumeDown, ButtonClass_SourceCD, ButtonClass_SourceTuner, ButtonClass_SourceTape,
  ButtonClass_SourceDVD, ButtonClass_SourceVCR, ButtonClass_SourceSAT, ButtonClass_SourceAux
};
Q_ENUM_NS(TSystemButtonClass)

// Group 5, iPortClassGroup.
// NOLINTNEXTLINE(readability-identifier-naming): the vocabulary spells the group "iPort"
enum TiPortButtonClass : std::uint8_t {
  ButtonClass_iPort_None, ButtonClass_iPort_Menu, ButtonClass_iPort_Enter,
  ButtonClass_iPort_Play_Pause, ButtonClass_iPort_NextTrack, ButtonClass_iPort_PrevTrack,
  ButtonClass_iPort_PageUp, ButtonClass_iPort_PageDown, ButtonClass_iPort_Up,
  ButtonClass_iPort_Down, ButtonClass_iPort_Repeat, ButtonClass_iPort_Shuffle,
  ButtonClass_iPort_Play, ButtonClass_iPort_Pause_Stop, ButtonClass_iPort_Stop
};
Q_ENUM_NS(TiPortButtonClass)

// Group 6, IntegraTunerClassGroup.
enum TIntegraTunerButtonClass : std::uint8_t {
  ButtonClass_IntegraTuner_None, ButtonClass_IntegraTuner_Power, ButtonClass_IntegraTuner_Src_FM,
  ButtonClass_IntegraTuner_Src_AM, ButtonClass_IntegraTuner_Src_XM,
  ButtonClass_IntegraTuner_Src_Sirius, ButtonClass_IntegraTuner_Src_DAB,
  ButtonClass_IntegraTuner_PresetUp, ButtonClass_IntegraTuner_PresetDown,
  ButtonClass_IntegraTuner_Preset1, ButtonClass_IntegraTuner_Preset2,
  ButtonClass_IntegraTuner_Preset3, ButtonClass_IntegraTuner_Preset4,
  ButtonClass_IntegraTuner_Preset5, ButtonClass_IntegraTuner_Preset6,
  ButtonClass_IntegraTuner_Preset7, ButtonClass_IntegraTuner_Preset8,
  ButtonClass_IntegraTuner_Preset9, ButtonClass_IntegraTuner_Preset10, ButtonClass_IntegraTuner_0,
  ButtonClass_IntegraTuner_1, ButtonClass_IntegraTuner_2, ButtonClass_IntegraTuner_3,
  ButtonClass_IntegraTuner_4, ButtonClass_IntegraTuner_5, ButtonClass_IntegraTuner_6,
  ButtonClass_IntegraTuner_7, ButtonClass_IntegraTuner_8, ButtonClass_IntegraTuner_9,
  ButtonClass_IntegraTuner_Enter
};
Q_ENUM_NS(TIntegraTunerButtonClass)

// Group 7, IntegraReceiverClassGroup.
enum TIntegraReceiverButtonClass : std::uint8_t {
  ButtonClass_IntegraReceiver_None, ButtonClass_IntegraReceiver_Power,
  ButtonClass_IntegraReceiver_Mute, ButtonClass_IntegraReceiver_VolUp,
  ButtonClass_IntegraReceiver_VolDown, ButtonClass_IntegraReceiver_Src_Up,
  ButtonClass_IntegraReceiver_Src_Down, ButtonClass_IntegraReceiver_Src_Video1,
  ButtonClass_IntegraReceiver_Src_Video2, ButtonClass_IntegraReceiver_Src_Video3,
  ButtonClass_IntegraReceiver_Src_Video4, ButtonClass_IntegraReceiver_Src_Video5,
  ButtonClass_IntegraReceiver_Src_Video6, ButtonClass_IntegraReceiver_Src_Video7,
  ButtonClass_IntegraReceiver_Src_DVD, ButtonClass_IntegraReceiver_Src_Tape1,
  ButtonClass_IntegraReceiver_Src_Tape2, ButtonClass_IntegraReceiver_Src_Phono,
  ButtonClass_IntegraReceiver_Src_CD, ButtonClass_IntegraReceiver_Src_FM,
  ButtonClass_IntegraReceiver_Src_AM, ButtonClass_IntegraReceiver_Src_Tuner,
  ButtonClass_IntegraReceiver_Src_MusicServer, ButtonClass_IntegraReceiver_Src_InternetRadio,
  ButtonClass_IntegraReceiver_Src_USB, ButtonClass_IntegraReceiver_Src_Multi_Ch,
  ButtonClass_IntegraReceiver_Src_XM, ButtonClass_IntegraReceiver_Src_Sirius,
  ButtonClass_IntegraReceiver_PresetUp, ButtonClass_IntegraReceiver_PresetDown,
  ButtonClass_IntegraReceiver_Preset1, ButtonClass_IntegraReceiver_Preset2,
  ButtonClass_IntegraReceiver_Preset3, ButtonClass_IntegraReceiver_Preset4,
  ButtonClass_IntegraReceiver_Preset5, ButtonClass_IntegraReceiver_Preset6,
  ButtonClass_IntegraReceiver_Preset7, ButtonClass_IntegraReceiver_Preset8,
  ButtonClass_IntegraReceiver_Preset9, ButtonClass_IntegraReceiver_Preset10,
  ButtonClass_IntegraReceiver_0, ButtonClass_IntegraReceiver_1, ButtonClass_IntegraReceiver_2,
  ButtonClass_IntegraReceiver_3, ButtonClass_IntegraReceiver_4, ButtonClass_IntegraReceiver_5,
  ButtonClass_IntegraReceiver_6, ButtonClass_IntegraReceiver_7, ButtonClass_IntegraReceiver_8,
  ButtonClass_IntegraReceiver_9, ButtonClass_IntegraReceiver_Enter,
  ButtonClass_IntegraReceiver_Src_Source, ButtonClass_IntegraReceiver_Src_Port,
  ButtonClass_IntegraReceiver_Src_USB_Rear, ButtonClass_IntegraReceiver_Cursor_Up,
  ButtonClass_IntegraReceiver_Cursor_Down, ButtonClass_IntegraReceiver_Page_Up,
  ButtonClass_IntegraReceiver_Page_Down, ButtonClass_IntegraReceiver_Back,
  ButtonClass_IntegraReceiver_Playlist_Enter, ButtonClass_IntegraReceiver_Play_Pause,
  ButtonClass_IntegraReceiver_Play, ButtonClass_IntegraReceiver_Pause_Stop,
  ButtonClass_IntegraReceiver_Stop, ButtonClass_IntegraReceiver_Next_Track,
  ButtonClass_IntegraReceiver_Prev_Track, ButtonClass_IntegraReceiver_Repeat,
  ButtonClass_IntegraReceiver_Shuffle, ButtonClass_IntegraReceiver_Src_NET
};
Q_ENUM_NS(TIntegraReceiverButtonClass)

// Group 10, IntegraDVDPlayerClassGroup.
enum TIntegraDVDPlayerButtonClass : std::uint8_t {
  ButtonClass_IntegraDVDPlayer_None, ButtonClass_IntegraDVDPlayer_Power,
  ButtonClass_IntegraDVDPlayer_Play_Pause, ButtonClass_IntegraDVDPlayer_NextTrack,
  ButtonClass_IntegraDVDPlayer_PrevTrack, ButtonClass_IntegraDVDPlayer_NextDisc,
  ButtonClass_IntegraDVDPlayer_PrevDisc, ButtonClass_IntegraDVDPlayer_Random,
  ButtonClass_IntegraDVDPlayer_Repeat, ButtonClass_IntegraDVDPlayer_Menu_Title,
  ButtonClass_IntegraDVDPlayer_Up, ButtonClass_IntegraDVDPlayer_Down,
  ButtonClass_IntegraDVDPlayer_Left, ButtonClass_IntegraDVDPlayer_Right,
  ButtonClass_IntegraDVDPlayer_0, ButtonClass_IntegraDVDPlayer_1, ButtonClass_IntegraDVDPlayer_2,
  ButtonClass_IntegraDVDPlayer_3, ButtonClass_IntegraDVDPlayer_4, ButtonClass_IntegraDVDPlayer_5,
  ButtonClass_IntegraDVDPlayer_6, ButtonClass_IntegraDVDPlayer_7, ButtonClass_IntegraDVDPlayer_8,
  ButtonClass_IntegraDVDPlayer_9, ButtonClass_IntegraDVDPlayer_10,
  ButtonClass_IntegraDVDPlayer_Enter, ButtonClass_IntegraDVDPlayer_Return,
  ButtonClass_IntegraDVDPlayer_Audio, ButtonClass_IntegraDVDPlayer_Subtitle
};
Q_ENUM_NS(TIntegraDVDPlayerButtonClass)

// Group 11, ClockClassGroup.
enum TClockButtonClass : std::uint8_t {
  ButtonClass_Clock_None, ButtonClass_Clock_mode_select, ButtonClass_Clock_increment,
  ButtonClass_Clock_decrement
};
Q_ENUM_NS(TClockButtonClass)

// Group 12, VantageLightingClassGroup.
enum TVantageLightingButtonClass : std::uint8_t {
  ButtonClass_Vantage_None, ButtonClass_Vantage_Task, ButtonClass_Vantage_LoadUp,
  ButtonClass_Vantage_LoadDown
};
Q_ENUM_NS(TVantageLightingButtonClass)

// Group 13, DLOClassGroup.
enum TDLOButtonClass : std::uint8_t {
  ButtonClass_DLO_None, ButtonClass_DLO_Up, ButtonClass_DLO_Down, ButtonClass_DLO_Left,
  ButtonClass_DLO_Right, ButtonClass_DLO_Enter, ButtonClass_DLO_Play_Pause,
  ButtonClass_DLO_NextTrack, ButtonClass_DLO_PrevTrack, ButtonClass_DLO_PageUp,
  ButtonClass_DLO_PageDown
};
Q_ENUM_NS(TDLOButtonClass)

// Group 14, AutonomicClassGroup.
enum TAutonomicButtonClass : std::uint8_t {
  ButtonClass_Autonomic_None, ButtonClass_Autonomic_Menu, ButtonClass_Autonomic_Enter,
  ButtonClass_Autonomic_Play_Pause_Stop, ButtonClass_Autonomic_NextTrack,
  ButtonClass_Autonomic_PrevTrack, ButtonClass_Autonomic_PageUp, ButtonClass_Autonomic_PageDown,
  ButtonClass_Autonomic_Up, ButtonClass_Autonomic_Down, ButtonClass_Autonomic_Repeat,
  ButtonClass_Autonomic_Shuffle, ButtonClass_Autonomic_Play, ButtonClass_Autonomic_Pause_Stop,
  ButtonClass_Autonomic_Stop
};
Q_ENUM_NS(TAutonomicButtonClass)

// Group 15, VantageDMMClassGroup.
enum TVantageDMMButtonClass : std::uint8_t {
  ButtonClass_VantageDMM_None, ButtonClass_VantageDMM_Menu, ButtonClass_VantageDMM_Enter,
  ButtonClass_VantageDMM_Play_Pause, ButtonClass_VantageDMM_NextTrack,
  ButtonClass_VantageDMM_PrevTrack, ButtonClass_VantageDMM_PageUp, ButtonClass_VantageDMM_PageDown,
  ButtonClass_VantageDMM_Up, ButtonClass_VantageDMM_Down, ButtonClass_VantageDMM_Repeat,
  ButtonClass_VantageDMM_Shuffle, ButtonClass_VantageDMM_Play, ButtonClass_VantageDMM_Pause_Stop,
  ButtonClass_VantageDMM_Stop
};
Q_ENUM_NS(TVantageDMMButtonClass)

// Group 16, BrioTunerClassGroup.
enum TBrioTunerButtonClass : std::uint8_t {
  ButtonClass_BrioTuner_None, ButtonClass_BrioTuner_Power, ButtonClass_BrioTuner_Src_FM,
  ButtonClass_BrioTuner_Src_AM, ButtonClass_BrioTuner_PresetUp, ButtonClass_BrioTuner_PresetDown,
  ButtonClass_BrioTuner_Preset1, ButtonClass_BrioTuner_Preset2, ButtonClass_BrioTuner_Preset3,
  ButtonClass_BrioTuner_Preset4, ButtonClass_BrioTuner_Preset5, ButtonClass_BrioTuner_Preset6,
  ButtonClass_BrioTuner_Preset7, ButtonClass_BrioTuner_Preset8, ButtonClass_BrioTuner_Preset9,
  ButtonClass_BrioTuner_Preset10, ButtonClass_BrioTuner_0, ButtonClass_BrioTuner_1,
  ButtonClass_BrioTuner_2, ButtonClass_BrioTuner_3, ButtonClass_BrioTuner_4,
  ButtonClass_BrioTuner_5, ButtonClass_BrioTuner_6, ButtonClass_BrioTuner_7,
  ButtonClass_BrioTuner_8, ButtonClass_BrioTuner_9, ButtonClass_BrioTuner_Enter,
  ButtonClass_BrioTuner_TuneUp, ButtonClass_BrioTuner_TuneDown
};
Q_ENUM_NS(TBrioTunerButtonClass)

// Group 17, ReQuestClassGroup.
enum TReQuestButtonClass : std::uint8_t {
  ButtonClass_ReQuest_None, ButtonClass_ReQuest_Cancel, ButtonClass_ReQuest_Up,
  ButtonClass_ReQuest_Down, ButtonClass_ReQuest_Left, ButtonClass_ReQuest_Right,
  ButtonClass_ReQuest_Enter, ButtonClass_ReQuest_Page_up, ButtonClass_ReQuest_Page_down,
  ButtonClass_ReQuest_Next_track, ButtonClass_ReQuest_Prev_track, ButtonClass_ReQuest_Shuffle,
  ButtonClass_ReQuest_Repeat, ButtonClass_ReQuest_Play, ButtonClass_ReQuest_Play_Pause,
  ButtonClass_ReQuest_Pause_Stop, ButtonClass_ReQuest_SourceSelect, ButtonClass_ReQuest_Search_abc,
  ButtonClass_ReQuest_Search_def, ButtonClass_ReQuest_Search_ghi, ButtonClass_ReQuest_Search_jkl,
  ButtonClass_ReQuest_Search_mno, ButtonClass_ReQuest_Search_pqrs, ButtonClass_ReQuest_Search_tuv,
  ButtonClass_ReQuest_Search_wxyz, ButtonClass_ReQuest_Stop
};
Q_ENUM_NS(TReQuestButtonClass)

// Group 18, NorvaAlarmCnfgClassGroup.
enum TNorvaAlarmCnfgButtonClass : std::uint8_t {
  ButtonClass_Alarm_None, ButtonClass_Alarm_Preset_1, ButtonClass_Alarm_Preset_2,
  ButtonClass_Alarm_Preset_3, ButtonClass_Alarm_Preset_4, ButtonClass_Alarm_Preset_5,
  ButtonClass_Alarm_Preset_6, ButtonClass_Alarm_Sunday, ButtonClass_Alarm_Monday,
  ButtonClass_Alarm_Tuesday, ButtonClass_Alarm_Wednesday, ButtonClass_Alarm_Thursday,
  ButtonClass_Alarm_Friday, ButtonClass_Alarm_Saturday, ButtonClass_Alarm_Enable,
  ButtonClass_Alarm_Hour_Increment, ButtonClass_Alarm_Hour_Decrement,
  ButtonClass_Alarm_Minute_Increment, ButtonClass_Alarm_Minute_Decrement, ButtonClass_Alarm_Enter,
  ButtonClass_Alarm_Preset_7, ButtonClass_Alarm_Preset_8, ButtonClass_Alarm_Preset_9,
  ButtonClass_Alarm_Preset_10, ButtonClass_Alarm_Preset_11, ButtonClass_Alarm_Preset_12,
  ButtonClass_Alarm_Preset_13, ButtonClass_Alarm_Preset_14
};
Q_ENUM_NS(TNorvaAlarmCnfgButtonClass)

// Group 19, CBusLightingClassGroup.
enum TCBusLightingButtonClass : std::uint8_t {
  ButtonClass_CBus_None, ButtonClass_CBus_Toggle, ButtonClass_CBus_Off, ButtonClass_CBus_On,
  ButtonClass_CBus_LoadUp, ButtonClass_CBus_LoadDown, ButtonClass_CBus_Scene_1,
  ButtonClass_CBus_Scene_2, ButtonClass_CBus_Scene_3, ButtonClass_CBus_Scene_4,
  ButtonClass_CBus_Scene_5, ButtonClass_CBus_Scene_6, ButtonClass_CBus_Scene_7,
  ButtonClass_CBus_Scene_8, ButtonClass_CBus_Scene_9, ButtonClass_CBus_Scene_10,
  ButtonClass_CBus_Scene_1_off, ButtonClass_CBus_Scene_2_off, ButtonClass_CBus_Scene_3_off,
  ButtonClass_CBus_Scene_4_off, ButtonClass_CBus_Scene_5_off, ButtonClass_CBus_Scene_6_off,
  ButtonClass_CBus_Scene_7_off, ButtonClass_CBus_Scene_8_off, ButtonClass_CBus_Scene_9_off,
  ButtonClass_CBus_Scene_10_off
};
Q_ENUM_NS(TCBusLightingButtonClass)

// Group 20, NvZr900GUIClassGroup.
enum TNvZr900GUIButtonClass : std::uint8_t {
  ButtonClass_NvZr900_none, ButtonClass_NvZr900_standby, ButtonClass_NvZr900_mute,
  ButtonClass_NvZr900_vol_up, ButtonClass_NvZr900_vol_down, ButtonClass_NvZr900_max_vol_up,
  ButtonClass_NvZr900_max_vol_down, ButtonClass_NvZr900_bass_up, ButtonClass_NvZr900_bass_down,
  ButtonClass_NvZr900_treble_up, ButtonClass_NvZr900_treble_down, ButtonClass_NvZr900_balance_left,
  ButtonClass_NvZr900_balance_right, ButtonClass_NvZr900_zone_number_up,
  ButtonClass_NvZr900_zone_number_down, ButtonClass_NvZr900_loudness,
  ButtonClass_NvZr900_restore_defaults, ButtonClass_NvZr900_more_sources,
  ButtonClass_NvZr900_source_1, ButtonClass_NvZr900_source_2, ButtonClass_NvZr900_source_3,
  ButtonClass_NvZr900_source_4, ButtonClass_NvZr900_source_5, ButtonClass_NvZr900_source_6,
  ButtonClass_NvZr900_source_7, ButtonClass_NvZr900_source_8, ButtonClass_NvZr900_source_9,
  ButtonClass_NvZr900_source_10, ButtonClass_NvZr900_source_11, ButtonClass_NvZr900_source_12,
  ButtonClass_NvZr900_source_13, ButtonClass_NvZr900_source_14, ButtonClass_NvZr900_source_15,
  ButtonClass_NvZr900_source_16, ButtonClass_NvZr900_output_0, ButtonClass_NvZr900_output_1,
  ButtonClass_NvZr900_output_2, ButtonClass_NvZr900_output_3, ButtonClass_NvZr900_output_4,
  ButtonClass_NvZr900_output_5, ButtonClass_NvZr900_output_6, ButtonClass_NvZr900_output_7,
  ButtonClass_NvZr900_source_gain_up, ButtonClass_NvZr900_source_gain_down,
  ButtonClass_NvZr900_delay_up, ButtonClass_NvZr900_delay_down,
  ButtonClass_NvZr900_non_preset_mode, ButtonClass_NvZr900_page_preset,
  ButtonClass_NvZr900_select_preset, ButtonClass_NvZr900_preset_1, ButtonClass_NvZr900_preset_2,
  ButtonClass_NvZr900_preset_3, ButtonClass_NvZr900_preset_4, ButtonClass_NvZr900_preset_5,
  ButtonClass_NvZr900_preset_6, ButtonClass_NvZr900_preset_7, ButtonClass_NvZr900_preset_8,
  ButtonClass_NvZr900_preset_9, ButtonClass_NvZr900_preset_10, ButtonClass_NvZr900_preset_11,
  ButtonClass_NvZr900_preset_12, ButtonClass_NvZr900_preset_13, ButtonClass_NvZr900_preset_14,
  ButtonClass_NvZr900_home_page, ButtonClass_NvZr900_navigate_back,
  ButtonClass_NvZr900_clear_alarms, ButtonClass_NvZr900_assign_page_preset_2,
  ButtonClass_NvZr900_page_preset_1_sound, ButtonClass_NvZr900_page_preset_2_sound,
  ButtonClass_Q8DA_source_up, ButtonClass_Q8DA_source_down, ButtonClass_Q8DA_source_name,
  ButtonClass_Q8DA_zone_name, ButtonClass_Q8DA_zone_name_settings, ButtonClass_Q8DA_ip_address,
  ButtonClass_Q8DA_serial_number, ButtonClass_Q8DA_page_1_sound_none,
  ButtonClass_Q8DA_page_1_sound_1, ButtonClass_Q8DA_page_1_sound_2,
  ButtonClass_Q8DA_page_1_sound_3, ButtonClass_Q8DA_page_1_sound_4,
  ButtonClass_Q8DA_page_1_sound_loop, ButtonClass_Q8DA_page_2_sound_none,
  ButtonClass_Q8DA_page_2_sound_1, ButtonClass_Q8DA_page_2_sound_2,
  ButtonClass_Q8DA_page_2_sound_3, ButtonClass_Q8DA_page_2_sound_4,
  ButtonClass_Q8DA_page_2_sound_loop, ButtonClass_Q8DA_page_2_select_page_1,
  ButtonClass_Q8DA_page_2_select_preset_1, ButtonClass_Q8DA_page_2_select_preset_2,
  ButtonClass_Q8DA_page_2_select_preset_3, ButtonClass_Q8DA_page_2_select_preset_4,
  ButtonClass_Q8DA_page_2_select_preset_5, ButtonClass_Q8DA_page_2_select_preset_6,
  ButtonClass_Q8DA_page_2_select_preset_7, ButtonClass_Q8DA_page_2_select_preset_8,
  ButtonClass_Q8DA_page_2_select_preset_9, ButtonClass_Q8DA_page_2_select_preset_10,
  ButtonClass_Q8DA_page_2_select_preset_11, ButtonClass_Q8DA_page_2_select_preset_12,
  ButtonClass_Q8DA_page_2_select_preset_13, ButtonClass_Q8DA_page_2_select_preset_14,
  ButtonClass_NvZr900_party_mode_toggle, ButtonClass_Q8DA_firmware_version,
  ButtonClass_NvZr900_system_reset, ButtonClass_NvZr900_zone_gain_up,
  ButtonClass_NvZr900_zone_gain_down
};
Q_ENUM_NS(TNvZr900GUIButtonClass)

// Group 21, ZoneLinkClassGroup.
enum TZoneLinkButtonClass : std::uint8_t {
  ButtonClass_ZoneLink_None, ButtonClass_ZoneLink_Select_None, ButtonClass_ZoneLink_OK,
  ButtonClass_ZoneLink_Zone_Up_Next, ButtonClass_ZoneLink_Zone_Down_Prev,
  ButtonClass_ZoneLink_Link_Volume, ButtonClass_ZoneLink_Link_Standby, ButtonClass_ZoneLink_z1,
  ButtonClass_ZoneLink_z2, ButtonClass_ZoneLink_z3, ButtonClass_ZoneLink_z4,
  ButtonClass_ZoneLink_z5, ButtonClass_ZoneLink_z6, ButtonClass_ZoneLink_z7,
  ButtonClass_ZoneLink_z8
};
Q_ENUM_NS(TZoneLinkButtonClass)

// Group 22, ZoneNameClassGroup.
enum TZoneNameButtonClass : std::uint8_t {
  ButtonClass_ZoneName_None, ButtonClass_ZoneName_1_punctuation_marks, ButtonClass_ZoneName_2_abc,
  ButtonClass_ZoneName_3_def, ButtonClass_ZoneName_4_ghi, ButtonClass_ZoneName_5_jkl,
  ButtonClass_ZoneName_6_mno, ButtonClass_ZoneName_7_pqrs, ButtonClass_ZoneName_8_tuv,
  ButtonClass_ZoneName_9_wxyz, ButtonClass_ZoneName_0_space, ButtonClass_ZoneName_backspace,
  ButtonClass_ZoneName_space, ButtonClass_ZoneName_hash, ButtonClass_ZoneName_at,
  ButtonClass_ZoneName_underscore, ButtonClass_ZoneName_dot, ButtonClass_ZoneName_backslash,
  ButtonClass_ZoneName_slash, ButtonClass_ZoneName_open_bracket,
  ButtonClass_ZoneName_close_bracket, ButtonClass_ZoneName_save, ButtonClass_ZoneName_cancel
};
Q_ENUM_NS(TZoneNameButtonClass)

// Group 23, NvZr900ClockClassGroup.
enum TNvZr900ClockButtonClass : std::uint8_t {
  ButtonClass_NvZr900_Clock_None, ButtonClass_NvZr900_Clock_mode_select,
  ButtonClass_NvZr900_Clock_increment, ButtonClass_NvZr900_Clock_decrement,
  ButtonClass_NvZr900_Clock_24h, ButtonClass_NvZr900_Clock_date_format,
  ButtonClass_NvZr900_Clock_enable_time_server
};
Q_ENUM_NS(TNvZr900ClockButtonClass)

// Group 24, NvZr900AlarmClassGroup.
enum TNvZr900AlarmButtonClass : std::uint8_t {
  ButtonClass_NvZr900_alarm_None, ButtonClass_NvZr900_alarm_hour_up,
  ButtonClass_NvZr900_alarm_hour_down, ButtonClass_NvZr900_alarm_minute_up,
  ButtonClass_NvZr900_alarm_minute_down, ButtonClass_NvZr900_alarm_sun,
  ButtonClass_NvZr900_alarm_mon, ButtonClass_NvZr900_alarm_tue, ButtonClass_NvZr900_alarm_wed,
  ButtonClass_NvZr900_alarm_thu, ButtonClass_NvZr900_alarm_fri, ButtonClass_NvZr900_alarm_sat,
  ButtonClass_NvZr900_alarm_enable
};
Q_ENUM_NS(TNvZr900AlarmButtonClass)

// Group 25, DNDClassGroup.
enum TDNDButtonClass : std::uint8_t {
  ButtonClass_NvZr900_dnd_None, ButtonClass_NvZr900_dnd_hour_from_increment,
  ButtonClass_NvZr900_dnd_hour_to_increment, ButtonClass_NvZr900_dnd_hour_from_decrement,
  ButtonClass_NvZr900_dnd_hour_to_decrement, ButtonClass_NvZr900_dnd_minute_from_increment,
  ButtonClass_NvZr900_dnd_minute_to_increment, ButtonClass_NvZr900_dnd_minute_from_decrement,
  ButtonClass_NvZr900_dnd_minute_to_decrement, ButtonClass_NvZr900_dnd_preset_increment,
  ButtonClass_NvZr900_dnd_preset_decrement
};
Q_ENUM_NS(TDNDButtonClass)

// Group 26, PresetZonesClassGroup.
enum TPresetZonesButtonClass : std::uint8_t {
  ButtonClass_NvZr900_preset_zones_None, ButtonClass_NvZr900_preset_zones_include_all,
  ButtonClass_NvZr900_preset_zones_exclude_all, ButtonClass_NvZr900_preset_zones_zone_up_next,
  ButtonClass_NvZr900_preset_zones_zone_down_prev, ButtonClass_NvZr900_preset_zones_OK,
  ButtonClass_NvZr900_preset_zones_z1, ButtonClass_NvZr900_preset_zones_z2,
  ButtonClass_NvZr900_preset_zones_z3, ButtonClass_NvZr900_preset_zones_z4,
  ButtonClass_NvZr900_preset_zones_z5, ButtonClass_NvZr900_preset_zones_z6,
  ButtonClass_NvZr900_preset_zones_z7, ButtonClass_NvZr900_preset_zones_z8
};
Q_ENUM_NS(TPresetZonesButtonClass)

// Group 27, LuxomLightingClassGroup.
enum TLuxomLightingButtonClass : std::uint8_t {
  ButtonClass_Luxom_None, ButtonClass_Luxom_Toggle, ButtonClass_Luxom_Off, ButtonClass_Luxom_On,
  ButtonClass_Luxom_Ramp_Up, ButtonClass_Luxom_Fade_Down
};
Q_ENUM_NS(TLuxomLightingButtonClass)

// Group 29, NetworkSettingsClassGroup.
enum TNetworkSettingsButtonClass : std::uint8_t {
  ButtonClass_NvZr900_network_settings_None, ButtonClass_NvZr900_network_settings_dhcp,
  ButtonClass_NvZr900_network_settings_static_ip, ButtonClass_NvZr900_network_settings_prev,
  ButtonClass_NvZr900_network_settings_next, ButtonClass_NvZr900_network_settings_decrement,
  ButtonClass_NvZr900_network_settings_increment
};
Q_ENUM_NS(TNetworkSettingsButtonClass)

// Group 30, USBNavigationClassGroup.
enum TUSBNavigationButtonClass : std::uint8_t {
  ButtonClass_NvZr900_USB_navigation_none, ButtonClass_NvZr900_USB_navigation_up,
  ButtonClass_NvZr900_USB_navigation_down, ButtonClass_NvZr900_USB_navigation_page_up,
  ButtonClass_NvZr900_USB_navigation_page_down, ButtonClass_NvZr900_USB_navigation_enter,
  ButtonClass_NvZr900_USB_navigation_play, ButtonClass_NvZr900_USB_navigation_stop,
  ButtonClass_NvZr900_USB_navigation_prev_track, ButtonClass_NvZr900_USB_navigation_next_track,
  ButtonClass_NvZr900_USB_navigation_pause
};
Q_ENUM_NS(TUSBNavigationButtonClass)
// clang-format on

}  // namespace ButtonClasses
}  // namespace norva
