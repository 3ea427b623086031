#pragma once
// What the library knows of the chosen command: its status, and for an infra-red stream its
// carrier, format, what repeats, its decode, its hex code and a picture of the stream; its button
// classes, with a class from the vocabulary to put in their place.

#include "StreamPicture.h"

#include <IR/CommandObject.h>

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace studio {

class TCommandDetails : public QWidget {
  Q_OBJECT

 public:
  explicit TCommandDetails(QWidget* parent = nullptr);

  // Shows the command, or nothing for none. The command is not kept: show it again after a change.
  void Show(const norva::TCommandObject* command);

  QString Text(const char* field) const;  // the value shown for a field ("decode", "hexCode"...)
  TStreamPicture* Picture() const { return mPicture; }
  QComboBox* ClassChoice() const { return mClassChoice; }
  QPushButton* SetClassButton() const { return mSetClass; }

 signals:
  // The installer chose this class in place of the command's classes.
  void ButtonClassChosen(const norva::TButtonClass& buttonClass);

 private:
  static QLabel* Field(const char* objectName);
  static QLineEdit* ReadOnlyLine(const char* objectName);

  QLabel* mName;
  QLabel* mStatus;
  QLabel* mCarrier;
  QLabel* mFormat;
  QLabel* mRepeats;
  QLabel* mClasses;
  QLineEdit* mDecode;
  QLineEdit* mHexCode;
  QComboBox* mClassChoice;
  QPushButton* mSetClass;
  TStreamPicture* mPicture;
};

}  // namespace studio
