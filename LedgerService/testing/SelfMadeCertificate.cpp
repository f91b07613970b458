#include "LedgerService/testing/SelfMadeCertificate.h"

#include <cstdio>
#include <memory>

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include "LedgerCore/Domain/Contract.h"

namespace LedgerService {

namespace {

constexpr long aDay = 24L * 60 * 60;

struct Freed {
    void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
    void operator()(X509* certificate) const { X509_free(certificate); }
    void operator()(X509_EXTENSION* extension) const { X509_EXTENSION_free(extension); }
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
template <class T>
using Held = std::unique_ptr<T, Freed>;

void extend(X509* certificate, int kind, const char* value)
{
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
    const Held<X509_EXTENSION> extension{X509V3_EXT_conf_nid(nullptr, &context, kind, value)};
    require(extension && X509_add_ext(certificate, extension.get(), -1) == 1, "a certificate takes an extension");
}

Held<X509> certificateOf(EVP_PKEY* key, SelfMadeCertificate::Validity validity)
{
    constexpr long v3 = 2;
    Held<X509> certificate{X509_new()};
    long serial = 0;
    RAND_bytes(reinterpret_cast<unsigned char*>(&serial), 4);
    X509_set_version(certificate.get(), v3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), serial);
    const bool past = validity == SelfMadeCertificate::Validity::past;
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), past ? -2 * aDay : -aDay);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), past ? -aDay : aDay);
    auto* const name = X509_get_subject_name(certificate.get());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8, reinterpret_cast<const unsigned char*>("sample ledger"), -1,
                               -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    X509_set_pubkey(certificate.get(), key);
    extend(certificate.get(), NID_subject_alt_name, "IP:127.0.0.1");
    extend(certificate.get(), NID_basic_constraints, "critical,CA:TRUE");
    require(X509_sign(certificate.get(), key, EVP_sha256()) > 0, "a certificate can be signed");
    return certificate;
}

}

SelfMadeCertificate::SelfMadeCertificate(const std::string& path, Validity validity)
    : m_file(path + ".pem"), m_keyFile(path + ".key")
{
    const Held<EVP_PKEY> key{EVP_EC_gen("P-256")};
    require(key != nullptr, "a key can be made");
    const auto certificate = certificateOf(key.get(), validity);
    const Held<std::FILE> file{std::fopen(m_file.c_str(), "we")};
    const Held<std::FILE> keyFile{std::fopen(m_keyFile.c_str(), "we")};
    require(file && PEM_write_X509(file.get(), certificate.get()) == 1, "a certificate can be written");
    require(keyFile && PEM_write_PrivateKey(keyFile.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr) == 1,
            "a key can be written");
}

}
