#include "standin/Digester.h"

#include <QByteArray>

#include <openssl/evp.h>
#include <zlib.h>

#include <cstdio>

namespace standin {

struct Digester::State
{
    Digest kind = Digest::none;
    uLong crc = 0;
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> sha{nullptr, EVP_MD_CTX_free};
};

Digester::Digester(Digest kind)
    : m_state(std::make_unique<State>())
{
    m_state->kind = kind;
    if (kind == Digest::sha256) {
        m_state->sha.reset(EVP_MD_CTX_new());
        EVP_DigestInit_ex(m_state->sha.get(), EVP_sha256(), nullptr);
    }
}

Digester::~Digester() = default;
Digester::Digester(Digester&&) noexcept = default;

void Digester::add(std::string_view bytes)
{
    if (m_state->kind == Digest::crc32)
        m_state->crc = crc32_z(m_state->crc, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
    else if (m_state->kind == Digest::sha256)
        EVP_DigestUpdate(m_state->sha.get(), bytes.data(), bytes.size());
}

std::string Digester::finish()
{
    if (m_state->kind == Digest::crc32) {
        char text[9];
        std::snprintf(text, sizeof text, "%08lx", m_state->crc & 0xffffffffUL);
        return text;
    }
    if (m_state->kind == Digest::sha256) {
        unsigned char bytes[EVP_MAX_MD_SIZE];
        unsigned int size = 0;
        EVP_DigestFinal_ex(m_state->sha.get(), bytes, &size);
        return QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)).toHex().toStdString();
    }
    return {};
}

} // namespace standin
