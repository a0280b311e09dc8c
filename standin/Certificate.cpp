#include "standin/Certificate.h"

#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <memory>

namespace standin {

namespace {

template <auto function>
struct Freed
{
    template <typename T>
    void operator()(T* pointer) const
    {
        function(pointer);
    }
};
using Key = std::unique_ptr<EVP_PKEY, Freed<EVP_PKEY_free>>;
using X509Ptr = std::unique_ptr<X509, Freed<X509_free>>;
using Bio = std::unique_ptr<BIO, Freed<BIO_free_all>>;
using Extension = std::unique_ptr<X509_EXTENSION, Freed<X509_EXTENSION_free>>;

constexpr long day = 24L * 60 * 60;

template <typename Write>
std::string pem(Write write)
{
    const Bio bio(BIO_new(BIO_s_mem()));
    write(bio.get());
    char* data = nullptr;
    const long size = BIO_get_mem_data(bio.get(), &data);
    return {data, static_cast<std::size_t>(size)};
}

void addExtension(X509* certificate, int kind, const char* value)
{
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
    const Extension extension(X509V3_EXT_conf_nid(nullptr, &context, kind, value));
    X509_add_ext(certificate, extension.get(), -1);
}

X509Ptr makeCertificate(EVP_PKEY* key, Tls kind)
{
    X509Ptr certificate(X509_new());
    auto* x509 = certificate.get();
    X509_set_version(x509, X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(x509), 1);
    const bool isExpired = kind == Tls::expired;
    X509_gmtime_adj(X509_getm_notBefore(x509), isExpired ? -1000 * day : -day);
    X509_gmtime_adj(X509_getm_notAfter(x509), isExpired ? -900 * day : 30 * day);
    X509_set_pubkey(x509, key);
    auto* name = X509_get_subject_name(x509);
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("localhost"), -1, -1,
                               0);
    X509_set_issuer_name(x509, name);
    addExtension(x509, NID_basic_constraints, "critical,CA:TRUE");
    addExtension(x509, NID_subject_alt_name, "DNS:localhost,DNS:jira.example.test,IP:127.0.0.1");
    X509_sign(x509, key, EVP_sha256());
    return certificate;
}

} // namespace

Certificate Certificate::make(Tls kind)
{
    const Key key(EVP_EC_gen("P-256"));
    const auto certificate = makeCertificate(key.get(), kind);
    return {
        .certificate = pem([&](BIO* bio) { PEM_write_bio_X509(bio, certificate.get()); }),
        .key = pem([&](BIO* bio) { PEM_write_bio_PrivateKey(bio, key.get(), nullptr, nullptr, 0, nullptr, nullptr); }),
    };
}

} // namespace standin
