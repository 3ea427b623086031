#include <NorvaBusComms/CommsTypes.h>

namespace norva {

bool SpeaksTextForm(TCommsDeviceType type) {
  static const TCommsDeviceTypes textDevices = {RS232Device,    NorvaAmp,      NorvaWk2,
                                                IntegraAmp,     IntegraKey,    VideoSwitch_V2,
                                                NorvaAmp_Zr900, NorvaAmp_Zr500};
  return textDevices.Contains(type);
}

}  // namespace norva
