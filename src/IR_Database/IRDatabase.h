#pragma once
// The IR database: the user's library of device commands, makes holding models holding commands,
// in one XML file (root element "ir_database"). A public database also carries the built-in makes
// of the installation's own devices and is read-only, and so is a database whose file exists but
// did not load: that file is never written over.

#include <IR/IRStream.h>
#include <IR_Database/Make.h>
#include <IR_Database/StreamNames.h>
#include <IR_Database/StreamRecognition.h>
#include <OrbGlobal/Model/OrbObjectList.h>

#include <QMetaObject>

#include <functional>
#include <memory>
#include <vector>

namespace norva {

class TIRDB;

// A failure to load the database's file, offered to the application before any box is shown; set
// `handled` to keep the box away.
using TDatabaseError = std::function<void(TIRDB& sender, const QString& errorMsg, bool& handled)>;

class TIRDB : public TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("SubComponent", "false")
  Q_PROPERTY(QString Filename READ GetFilename)
  Q_PROPERTY(bool NeedsSaving READ GetNeedsSaving)
  Q_PROPERTY(bool Public READ IsPublic)
  Q_PROPERTY(int MakeCount READ GetMakeCount)
  Q_PROPERTY(QString ShortName READ GetShortName)

 public:
  // Loads the file (a missing one gives an empty database); a load failure reaches `onError`. A
  // public database begins with the built-in makes and is read-only. Records nothing for undo.
  TIRDB(const QString& filename, bool isPublic, TDatabaseError onError = {});
  ~TIRDB() override;

  QString GetFilename() const { return GetName(); }
  bool GetNeedsSaving() const { return mNeedsSaving; }
  bool IsPublic() const { return mPublic; }
  // Public, marked read-only in the file system, or holding a file that did not load.
  bool IsReadOnly() const override { return mReadOnly || !mLoadFailure.isEmpty(); }
  // Empty when the file loaded or did not exist; otherwise one line naming the file and why it did
  // not load ("Error loading <path>: <reason> (line 2, position 7)").
  QString GetLoadFailure() const { return mLoadFailure; }
  void SetOnError(TDatabaseError handler) { mOnError = std::move(handler); }
  // The file name without folder and with the first occurrence of its extension removed.
  QString GetShortName() const;

  // Removes every make; a public database gets its built-in makes again.
  void Clear();
  TMake* AddNewMake();
  TMake* GetMake(int index) const { return static_cast<TMake*>(mMakes.Get(index)); }
  int GetMakeCount() const { return mMakes.Count(); }
  // The first make of that name, compared ignoring case, or none.
  TMake* GetMakeByName(const QString& name) const;
  // The model of that name in the make of that name (both compared ignoring case), each added
  // when missing; none when the database or the make is read-only.
  TModel* GetOrAddModel(const QString& makeName, const QString& modelName);

  TOrbObjectList* GetChildList(const TOrbObject* child) const override;
  using TOrbObject::Updated;
  // A change anywhere below makes a writable database need saving.
  void Updated(TOrbObject* sender) override;
  // To a database: its makes become copies of these; it keeps its own file.
  void AssignTo(QObject* dest) const override;

  // Reads the file: makes of the same name (case ignored, built-in ones included) are merged. A
  // malformed file ("Error loading <path>" with the reason, line and position) and a value no
  // command can hold (an unknown enumeration name, a length that is no number) are load failures:
  // offered to the error handler, else shown in an "Error" box; either leaves the database empty,
  // or with its built-in makes, and read-only. Records nothing for undo.
  void Load();
  // Keeps the file it replaces as BackupPath, then writes a temporary file beside the database and
  // renames it over the old one only once it is complete, so a failed save leaves the previous file
  // and a whole backup. A folder that does not exist moves the database to the temporary folder,
  // with a warning box. Refuses a file that did not load. Failures are raised with " while saving "
  // and the path appended; the database then still needs saving.
  void Save();
  // Saves to `path` and makes it the database's file: the way to keep a library that did not load
  // (that failure, and the read-only state it gave, are gone; public stays read-only). The file
  // that did not load is refused as `path` too.
  void SaveAs(const QString& path);
  // Where a save keeps the previous file: "<file>.bak".
  static QString BackupPath(const QString& path);

  // Names a received code: the first IR stream of the database (in make, model and command order)
  // that the stream matches gives its name, and its model's full name as category; a public
  // database then tries the native codes. False when none matches. Answered from an index that is
  // rebuilt after the database changed.
  bool GetNames(TIRStream& stream) const;
  // The same by walking the whole database, for checking the index.
  bool GetNamesByWalking(TIRStream& stream) const;
  // The index GetNames answers from, as it stands: a copy to extend, as an import does with the
  // codes it adds.
  TStreamNameIndex ExactNameIndex() const;
  // The names of every IR stream of the database that is the same button as `stream`
  // (StreamRecognition.h: the same decode, or the same structure within tolerances), in make,
  // model and command order, with their models' full names as category; a public database then
  // adds the native codes. Answered from an index that is rebuilt after the database changed.
  QList<TStreamName> RecogniseNames(const TIRStreamData& stream) const;

 private:
  void AddBuiltInMakes();
  void LoadFile(const QString& path);
  void ReportLoadFailure(const QString& errorMsg, const QString& failure);
  // The file name is no edit: it never goes into the undo history.
  void SetFilename(const QString& path);
  // The index held in `index`, built from every IR stream of the database when missing.
  template <typename TIndex>
  const TIndex& BuiltIndex(std::unique_ptr<TIndex>& index) const;
  void WatchIndexedStreams() const;
  void DropIndexes() const;

  // mutable: the child list is handed out by the const GetChildList.
  mutable TOrbObjectList mMakes;
  bool mNeedsSaving = false;
  bool mPublic = false;
  bool mReadOnly = false;
  QString mLoadFailure;
  TDatabaseError mOnError;
  mutable std::unique_ptr<TStreamNameIndex> mNameIndex;
  mutable std::unique_ptr<TStreamRecognitionIndex> mRecognitionIndex;
  // An owning list destroys an item without telling its owner when nothing is recorded for undo,
  // so the indexes watch the streams they were built from, once for both.
  mutable bool mWatchingStreams = false;
  mutable std::vector<QMetaObject::Connection> mIndexWatches;
};

}  // namespace norva
