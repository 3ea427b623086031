#pragma once
// What nearly every suite includes, parsed once for all of them (the test programs' precompiled
// header): GoogleTest, and the Qt Core and standard classes the suites use most.

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>
