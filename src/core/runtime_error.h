#pragma once
#include <QString>
#include <stdexcept>

// A fatal run-time error as the program's users know them: a number and a text.
// Raised where data or settings leave no sensible way on; the application shows it and ends.
class RuntimeError : public std::runtime_error {
public:
    RuntimeError(int number, const QString &text)
        : std::runtime_error(text.toStdString()), number_(number), text_(text) {}
    int number() const { return number_; }
    QString text() const { return text_; }

    static RuntimeError fileNotFound() { return {53, QStringLiteral("File not found")}; }
    static RuntimeError pathNotFound() { return {76, QStringLiteral("Path not found")}; }
    static RuntimeError subscriptOutOfRange() { return {9, QStringLiteral("Subscript out of range")}; }
    static RuntimeError divisionByZero() { return {11, QStringLiteral("Division by zero")}; }
    static RuntimeError inputPastEnd() { return {62, QStringLiteral("Input past end of file")}; }
    static RuntimeError overflow() { return {6, QStringLiteral("Overflow")}; }
    static RuntimeError pathFileAccess() { return {75, QStringLiteral("Path/File access error")}; }
    static RuntimeError deviceIO() { return {57, QStringLiteral("Device I/O error")}; }
    static RuntimeError diskFull() { return {61, QStringLiteral("Disk full")}; }
    static RuntimeError invalidCall() { return {5, QStringLiteral("Invalid procedure call or argument")}; }

private:
    int number_;
    QString text_;
};
