#include <IR/IRProtocolTable.h>

namespace norva {

namespace {

// clang-format off
constexpr TIRProtocolEntry Entries[] = {
  {"NEC1", "{38.4k,564}<1,-1|1,-3>(16,-8,D:8,S:8,F:8,~F:8,1,^108m,(16,-4,1,^108m)*)"
           "[D:0..255,S:0..255=255-D,F:0..255]"},
  {"NEC2", "{38.4k,564}<1,-1|1,-3>(16,-8,D:8,S:8,F:8,~F:8,1,^108m)*"
           "[D:0..255,S:0..255=255-D,F:0..255]"},
  {"NECx1", "{38.4k,564}<1,-1|1,-3>(8,-8,D:8,S:8,F:8,~F:8,1,^108m,(8,-8,D:1,1,^108m)*)"
            "[D:0..255,S:0..255=D,F:0..255]"},
  {"NECx2", "{38.4k,564}<1,-1|1,-3>(8,-8,D:8,S:8,F:8,~F:8,1,^108m)*"
            "[D:0..255,S:0..255=D,F:0..255]"},
  {"NEC1-f16", "{38.4k,564}<1,-1|1,-3>(16,-8,D:8,S:8,F:16,1,^108m,(16,-4,1,^108m)*)"
               "[D:0..255,S:0..255=255-D,F:0..65535]"},
  {"Samsung36", "{38k,500}<1,-1|1,-3>(9,-9,D:8,S:8,1,-9,E:4,F:8,-68u,~F:8,1,-118)+"
                "[D:0..255,S:0..255,F:0..255,E:0..15=1]"},
  {"RC5", "{36k,msb,889}<1,-1|-1,1>((1,~F:1:6,T:1,D:5,F:6,^114m)*,T=1-T)"
          "[D:0..31,F:0..127,T@:0..1=0]"},
  {"RC5x", "{36k,msb,889}<1,-1|-1,1>((1,~S:1:6,T:1,D:5,-4,S:6,F:6,^114m)*,T=1-T)"
           "[D:0..31,S:0..127,F:0..63,T@:0..1=0]"},
  {"RC6", "{36k,444,msb}<-1,1|1,-1>((6,-2,1:1,0:3,<-2,2|2,-2>(T:1),D:8,F:8,^107m)*,T=1-T)"
          "[D:0..255,F:0..255,T@:0..1=0]"},
  {"RC6-6-20", "{36k,444,msb}<-1,1|1,-1>((6,-2,1:1,6:3,<-2,2|2,-2>(T:1),D:8,S:4,F:8,^107m)*,"
               "T=1-T)[D:0..255,S:0..15,F:0..255,T@:0..1=0]"},
  {"MCE", "{36k,444,msb}<-1,1|1,-1>((6,-2,1:1,6:3,-2,2,OEM1:8,S:8,T:1,D:7,F:8,^107m)*,T=1-T)"
          "{OEM1=128}[D:0..127,S:0..255,F:0..255,T@:0..1=0]"},
  {"Sony12", "{40k,600}<1,-1|2,-1>(4,-1,F:7,D:5,^45m)+[D:0..31,F:0..127]"},
  {"Sony15", "{40k,600}<1,-1|2,-1>(4,-1,F:7,D:8,^45m)+[D:0..255,F:0..127]"},
  {"Sony20", "{40k,600}<1,-1|2,-1>(4,-1,F:7,D:5,S:8,^45m)+[D:0..31,S:0..255,F:0..127]"},
  {"Panasonic", "{37k,432}<1,-1|1,-3>(8,-4,2:8,32:8,D:8,S:8,F:8,(D^S^F):8,1,-173)+"
                "[D:0..255,S:0..255,F:0..255]"},
  {"Denon-K", "{37k,432}<1,-1|1,-3>(8,-4,84:8,50:8,0:4,D:4,S:4,F:12,((D*16)^S^(F*16)^(F:8:4)):8,"
              "1,-173)+[D:0..15,S:0..15,F:0..4095]"},
  {"Panasonic_Old", "{57.6k,833}<1,-1|1,-3>(4,-4,D:5,F:6,~D:5,~F:6,1,-44m)*[D:0..31,F:0..63]"},
  {"JVC", "{37.9k,527}<1,-1|1,-3>(16,-8,D:8,F:8,1,^59.08m,(D:8,F:8,1,^46.42m)*)"
          "[D:0..255,F:0..255]"},
  // Denon and Sharp send a frame, then it again with F complemented; the last two bits tell them
  // apart.
  {"Denon", "{38k,264}<1,-3|1,-7>(D:5,F:8,0:2,1,-165,D:5,~F:8,3:2,1,-165)*[D:0..31,F:0..255]"},
  {"Sharp", "{38k,264}<1,-3|1,-7>(D:5,F:8,1:2,1,-165,D:5,~F:8,2:2,1,-165)*[D:0..31,F:0..255]"},
  {"Aiwa", "{38.123k,550}<1,-1|1,-3>(16,-8,D:8,S:5,~D:8,~S:5,F:8,~F:8,1,-42,(16,-8,1,-165)*)"
           "[D:0..255,S:0..31,F:0..255]"},
  {"Mitsubishi", "{32.6k,300}<1,-3|1,-7>(D:8,F:8,1,-80)*[D:0..255,F:0..255]"},
  // NEC2's timing on a 40 kHz carrier.
  {"Pioneer", "{40k,564}<1,-1|1,-3>(16,-8,D:8,S:8,F:8,~F:8,1,^108m)*"
              "[D:0..255,S:0..255=255-D,F:0..255]"},
  {"Proton", "{38.5k,500}<1,-1|1,-3>(16,-8,D:8,1,-8,F:8,1,^63m)*[D:0..255,F:0..255]"},
  {"RCA-38", "{38.7k,460,msb}<1,-2|1,-4>(8,-8,D:4,F:8,~D:4,~F:8,1,-16)*[D:0..15,F:0..255]"},
  {"RECS80", "{38k,158,msb}<1,-31|1,-47>(1:1,T:1,D:3,F:6,1,-45m)*[D:0..7,F:0..63,T@:0..1=0]"},
  {"Dish_Network", "{57.6k,406}<1,-7|1,-4>(1,-15,(F:-6,S:5,D:5,1,-15)+)"
                   "[F:0..63,S:0..31,D:0..31]"},
  // Two bits per symbol; the first frame has a longer lead-in than the repeats.
  {"DirecTV", "{38k,600,msb}<1,-1|1,-2|2,-1|2,-2>(10,-2,D:4,F:8,C:4,1,-50,"
              "(5,-2,D:4,F:8,C:4,1,-50)*){C=7*F:2:6+5*F:2:4+3*F:2:2+F:2}[D:0..15,F:0..255]"},
  {"G.I.Cable", "{38.7k,490}<1,-4.5|1,-9>(18,-9,F:8,D:4,C:4,1,-84,(18,-4.5,1,-178)*)"
                "{C=-(D+F:4+F:4:4)}[D:0..15,F:0..255]"},
  // P, the frame's position, is 0 in the first frame and 1 in the repeats (2 in a last frame no
  // stream holds); the check nibble is 3 more than the 1 bits of D, P and F.
  {"OrtekMCE", "{38.6k,480}<1,-1|-1,1>(4,-1,D:5,0:2,F:6,C:4,-48m,(4,-1,D:5,1:2,F:6,(C+1):4,-48m)*)"
               "{C=3+#D+#F}[D:0..31,F:0..63]"},
  // The toggle bit marks a last frame no stream holds; E seeds the check nibble.
  {"Zaptor-36", "{36k,330,msb}<-1,1|1,-1>(8,-6,2,D:8,0:1,S:7,F:8,E:4,C:4,-74m)*"
                "{C=D:4+D:4:4+S:4+S:3:4+F:4+F:4:4+E}[D:0..255,S:0..127,F:0..255,E:0..15=0]"},
  // Three bytes as a serial line sends them (a start bit, eight data bits, a stop bit), sent once.
  // C is their CRC-8 (polynomial 0x31, bits reflected) of D and F, written as the XOR of what each
  // bit adds to it.
  {"GwtS", "{38.005k,417}<1|-1>(0:1,D:8,1:2,F:8,1:2,C:8,1:1)"
           "{C=D:1:0*196^D:1:1*145^D:1:2*59^D:1:3*118^D:1:4*236^D:1:5*193^D:1:6*155^D:1:7*47"
           "^F:1:0*94^F:1:1*188^F:1:2*97^F:1:3*194^F:1:4*157^F:1:5*35^F:1:6*70^F:1:7*140}"
           "[D:0..255=144,F:0..255]"},
  // x and y tell the members of the family apart. The check nibble is the XOR of the nine nibbles
  // before it, as every labelled code shows (public databases leave it free).
  {"IODATAn", "{38k,550}<1,-1|1,-3>(16,-8,x:7,D:7,S:7,y:7,F:8,C:4,1,^108m)*"
              "{V=x+D*128+S*16384+y*2097152+F*268435456,"
              "C=V^V>>4^V>>8^V>>12^V>>16^V>>20^V>>24^V>>28^V>>32}"
              "[D:0..127,S:0..127,F:0..255,x:0..127=0,y:0..127=0]"},
  // The meaning of the four bytes is not known; their names are the public databases' choice.
  {"F32", "{37.9k,422,msb}<1,-3|3,-1>(D:8,S:8,F:8,E:8,-100m)*"
          "[D:0..255,S:0..255,F:0..255,E:0..255=0]"},
  // The state of an air conditioner in three bytes after a fixed header: F power-on flag (low
  // nibble) and temperature, S mode and timer mode, D fan and swing; timers off; a checksum.
  {"Fujitsu_Aircon", "{38.4k,413}<1,-1|1,-3>(8,-4,20:8,99:8,0:8,16:8,16:8,254:8,9:8,48:8,"
                     "F:8,S:8,D:8,0:24,32:8,C:8,1,-104.3m)*{C=-(F+S+D+80)}"
                     "[D:0..255,S:0..255,F:0..255]"},
  {"Elunevision", "{0k,358,msb}<1,-3|3,-1>(10,-3,16023680:24,F:8,-7)*[F:0..255]"},
};
// clang-format on

}  // namespace

std::span<const TIRProtocolEntry> IRProtocolEntries() { return Entries; }

}  // namespace norva
