#pragma once

#include <QString>

#include <string>

/// How a fixture is encrypted. Passwords are in UTF-8.
struct Encryption
{
    enum class Method { Rc4, Aes128, Aes256 };
    Method method = Method::Aes256;
    std::string user;
    std::string owner;
    bool mayBeCopied = true;
};

/// Writes the PDF file @p source, encrypted, to @p target.
/// @returns false when the library could not do it
bool writeEncrypted(const std::string &source, const QString &target, const Encryption &encryption);
