#include <NorvaGlobal/SourceTables.h>

namespace norva {

const TSourceLabels SourceNames = {
    QStringLiteral("S5"),  QStringLiteral("S6"),     QStringLiteral("S7"),    QStringLiteral("S4"),
    QStringLiteral("S8"),  QStringLiteral("S1"),     QStringLiteral("S2"),    QStringLiteral("S3"),
    QStringLiteral("S9"),  QStringLiteral("S10"),    QStringLiteral("S11"),   QStringLiteral("S12"),
    QStringLiteral("S13"), QStringLiteral("S14"),    QStringLiteral("S15"),   QStringLiteral("S16"),
    QStringLiteral("USB"), QStringLiteral("iRadio"), QStringLiteral("Media"), QString()};

const TSourceSet PhysicalSources = TSourceSet::Range(FirstPhysicalSource, LastPhysicalSource);

const std::array<TSource, 17> SortedSources = {
    S1, S2, S3, S4, S5, S6, S7, S8, S9, S10, S11, S12, S13, S14, S15, S16, SourceMediaPlayer};

}  // namespace norva
