#pragma once
// What the IR database suites share: a folder of their own for the files, recorded message boxes,
// and the real codes of tests/data/ir to fill models with.

#include "FileContents.h"
#include "IR/IRCorpus.h"

#include <IR/IR.h>
#include <IR_Database/IR_Database.h>
#include <Testing/RecordingUIServices.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace norva::testing {

inline TIRStream* AddStream(TModel* model, const QString& name, const QString& code) {
  auto* stream = static_cast<TIRStream*>(model->AddNewCommandObject(&TIRStream::staticMetaObject));
  stream->SetName(name);
  stream->SetHexCode(code);
  return stream;
}

class TIRDatabaseTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(folder.isValid());
    for (const auto& [command, code] : Corpus()) codes << code;
    ASSERT_GT(codes.size(), 100);
  }
  QString Path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }

  QTemporaryDir folder;
  TRecordingUIServices services;
  TScopedUIServices scoped{services};
  QStringList codes;  // the corpus's Pronto hex codes, in file order
};

}  // namespace norva::testing
