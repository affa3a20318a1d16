// A folder of a test's own.
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

class TestFolder {
public:
    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    void put(const QString &name, const QByteArray &content) const {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path(name)).path()));
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] QByteArray content(const QString &name) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
        return file.readAll();
    }
    [[nodiscard]] QStringList files() const {
        return QDir(path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

private:
    QTemporaryDir m_folder;
};
