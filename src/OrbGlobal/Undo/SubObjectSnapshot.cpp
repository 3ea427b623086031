#include <OrbGlobal/Undo/SubObjectSnapshot.h>

#include <NorvaGlobal/DebugOutput.h>
#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Model/StreamPersist.h>
#include <OrbGlobal/Model/StreamStrings.h>
#include <OrbGlobal/Undo/PropertyKinds.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QBuffer>
#include <QtEndian>

namespace norva {

namespace {

template <typename T>
void WriteNumber(QIODevice& stream, T value) {
  char bytes[sizeof(T)];
  qToLittleEndian(value, bytes);
  stream.write(bytes, sizeof bytes);
}

// A short stream reads as 0, as the snapshot reader never fails on its own bytes.
template <typename T>
T ReadNumber(QIODevice& stream) {
  char bytes[sizeof(T)] = {};
  stream.read(bytes, sizeof bytes);
  return qFromLittleEndian<T>(bytes);
}

// Every property the snapshot keeps: stored and writable ones, from the model base on (QObject's
// own objectName is no part of a model object).
template <typename F>
void ForEachSnapshotProperty(const QMetaObject* cls, F&& visit) {
  for (int i = QObject::staticMetaObject.propertyCount(); i < cls->propertyCount(); ++i) {
    const QMetaProperty property = cls->property(i);
    if (property.isStored() && property.isWritable()) visit(property);
  }
}

void ReportUnsupported(const QMetaProperty& property) {
  DebugOutput(OrbLog(),
              QStringLiteral("Unsupported property type: ") + QString::fromLatin1(property.name()));
}

}  // namespace

TSubObjectSnapshot::TSubObjectSnapshot(const TOrbObject* object) {
  QBuffer stream(&mBytes);
  stream.open(QIODevice::WriteOnly);
  WriteObject(stream, object);
}

void TSubObjectSnapshot::WriteObject(QIODevice& stream, const TOrbObject* object) {
  const QMetaObject* cls = object ? object->metaObject() : nullptr;
  WriteNumber(stream, static_cast<quint64>(reinterpret_cast<quintptr>(cls)));
  if (!object) return;
  if (const auto* persist = dynamic_cast<const IStreamPersist*>(object)) {
    persist->SaveToStream(stream);
  } else {
    WriteProperties(stream, *object);
  }
}

void TSubObjectSnapshot::WriteProperties(QIODevice& stream, const TOrbObject& object) {
  ForEachSnapshotProperty(object.metaObject(), [&](const QMetaProperty& property) {
    const QVariant value = property.read(&object);
    switch (PropertyKindOf(property)) {
      case TPropertyKind::Ordinal: WriteNumber(stream, OrdinalOf(value)); break;
      case TPropertyKind::AnsiString:
        SaveStringToStream(QString::fromLatin1(value.toByteArray()), stream);
        break;
      case TPropertyKind::UnicodeString: SaveStringToStream(value.toString(), stream); break;
      case TPropertyKind::ObjectReference:
        WriteNumber(stream, static_cast<qint32>(mReferences.size()));
        mReferences.emplace_back(OrbObjectOf(value));
        break;
      case TPropertyKind::SubObject: WriteObject(stream, OrbObjectOf(value)); break;
      case TPropertyKind::Variant:
      case TPropertyKind::DynamicArray:
        WriteNumber(stream, static_cast<qint32>(mValues.size()));
        mValues.append(value);
        break;
      case TPropertyKind::OtherClass:
      case TPropertyKind::Unsupported: ReportUnsupported(property); break;
    }
  });
}

std::unique_ptr<TOrbObject> TSubObjectSnapshot::Restore() const {
  QBuffer stream;
  stream.setData(mBytes);
  stream.open(QIODevice::ReadOnly);
  const TUndoSuspended suspended;
  return ReadObject(stream);
}

std::unique_ptr<TOrbObject> TSubObjectSnapshot::ReadObject(QIODevice& stream) const {
  const auto identity = static_cast<quintptr>(ReadNumber<quint64>(stream));
  if (identity == 0) return nullptr;
  const auto* cls = reinterpret_cast<const QMetaObject*>(identity);
  std::unique_ptr<TOrbObject> object(ConstructOrbObject(cls, nullptr));
  if (auto* persist = dynamic_cast<IStreamPersist*>(object.get())) {
    persist->LoadFromStream(stream);
  } else {
    ReadProperties(stream, *object);
  }
  return object;
}

void TSubObjectSnapshot::ReadProperties(QIODevice& stream, TOrbObject& object) const {
  ForEachSnapshotProperty(object.metaObject(), [&](const QMetaProperty& property) {
    switch (PropertyKindOf(property)) {
      case TPropertyKind::Ordinal:
        property.write(&object, OrdinalValue(property.metaType(), ReadNumber<qint32>(stream)));
        break;
      case TPropertyKind::AnsiString:
        property.write(&object, LoadStringFromStream(stream).toLatin1());
        break;
      case TPropertyKind::UnicodeString:
        property.write(&object, LoadStringFromStream(stream));
        break;
      case TPropertyKind::ObjectReference: {
        const auto index = static_cast<std::size_t>(ReadNumber<qint32>(stream));
        TOrbObject* referenced = index < mReferences.size() ? mReferences[index].data() : nullptr;
        property.write(&object, ObjectPropertyValue(property.metaType(), referenced));
        break;
      }
      case TPropertyKind::SubObject: {
        const std::unique_ptr<TOrbObject> part = ReadObject(stream);
        property.write(&object, ObjectPropertyValue(property.metaType(), part.get()));
        break;
      }
      case TPropertyKind::Variant:
      case TPropertyKind::DynamicArray:
        property.write(&object, mValues.value(ReadNumber<qint32>(stream)));
        break;
      case TPropertyKind::OtherClass:
      case TPropertyKind::Unsupported: break;
    }
  });
}

}  // namespace norva
