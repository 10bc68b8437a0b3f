#include "tests/net/support/TestCertificateAuthority.h"

#include <atomic>

#include <openssl/bio.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

namespace quillmar::testing_support {

namespace {

Error opensslError(const char* what)
{
    return Error { "test.certificate", "A test certificate could not be made.", what };
}

KeyPointer makeKey()
{
    return KeyPointer(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"));
}

bool addExtension(X509* certificate, X509* issuer, int nid, const char* value)
{
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, &context, nid, value);
    if (!extension)
        return false;
    bool added = X509_add_ext(certificate, extension, -1) == 1;
    X509_EXTENSION_free(extension);
    return added;
}

// A certificate for `key` named `commonName`, not yet signed and without extensions.
X509Pointer makeCertificate(EVP_PKEY* key, const std::string& commonName)
{
    static std::atomic<long> serial { 1000 };
    X509Pointer certificate(X509_new());
    if (!certificate)
        return nullptr;
    X509_set_version(certificate.get(), 2); // version 3, counted from zero
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), serial++);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 24 * 3600);
    X509_set_pubkey(certificate.get(), key);
    X509_NAME* name = X509_get_subject_name(certificate.get());
    X509_NAME_add_entry_by_txt(name, "O", MBSTRING_ASC,
        reinterpret_cast<const unsigned char*>("Quillmar tests"), -1, -1, 0);
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC,
        reinterpret_cast<const unsigned char*>(commonName.c_str()), -1, -1, 0);
    return certificate;
}

std::string pemOf(X509* certificate)
{
    std::unique_ptr<BIO, decltype(&BIO_free)> bio(BIO_new(BIO_s_mem()), &BIO_free);
    if (!bio || PEM_write_bio_X509(bio.get(), certificate) != 1)
        return {};
    BUF_MEM* memory = nullptr;
    BIO_get_mem_ptr(bio.get(), &memory);
    return std::string(memory->data, memory->length);
}

} // namespace

TestCertificateAuthority::TestCertificateAuthority(X509Pointer certificate, KeyPointer key, std::string pem)
    : m_certificate(std::move(certificate))
    , m_key(std::move(key))
    , m_certificatePem(std::move(pem))
{
}

Result<TestCertificateAuthority> TestCertificateAuthority::create()
{
    auto key = makeKey();
    if (!key)
        return opensslError("authority key");
    auto certificate = makeCertificate(key.get(), "Quillmar Test Authority");
    if (!certificate)
        return opensslError("authority certificate");
    X509_set_issuer_name(certificate.get(), X509_get_subject_name(certificate.get()));
    X509* self = certificate.get();
    if (!addExtension(self, self, NID_basic_constraints, "critical,CA:TRUE")
        || !addExtension(self, self, NID_key_usage, "critical,keyCertSign,cRLSign")
        || !addExtension(self, self, NID_subject_key_identifier, "hash"))
        return opensslError("authority extensions");
    if (X509_sign(self, key.get(), EVP_sha256()) == 0)
        return opensslError("authority signature");
    auto pem = pemOf(self);
    if (pem.empty())
        return opensslError("authority pem");
    return TestCertificateAuthority(std::move(certificate), std::move(key), std::move(pem));
}

Result<IssuedIdentity> TestCertificateAuthority::issue(const std::vector<std::string>& dnsNames) const
{
    auto key = makeKey();
    if (!key)
        return opensslError("server key");
    auto certificate = makeCertificate(key.get(), dnsNames.empty() ? "server" : dnsNames.front());
    if (!certificate)
        return opensslError("server certificate");
    X509_set_issuer_name(certificate.get(), X509_get_subject_name(m_certificate.get()));
    std::string alternativeNames;
    for (const auto& name : dnsNames)
        alternativeNames += (alternativeNames.empty() ? "DNS:" : ",DNS:") + name;
    X509* leaf = certificate.get();
    X509* issuer = m_certificate.get();
    if (!addExtension(leaf, issuer, NID_basic_constraints, "critical,CA:FALSE")
        || !addExtension(leaf, issuer, NID_key_usage, "critical,digitalSignature")
        || !addExtension(leaf, issuer, NID_ext_key_usage, "serverAuth")
        || !addExtension(leaf, issuer, NID_authority_key_identifier, "keyid")
        || (!alternativeNames.empty() && !addExtension(leaf, issuer, NID_subject_alt_name, alternativeNames.c_str())))
        return opensslError("server extensions");
    if (X509_sign(leaf, m_key.get(), EVP_sha256()) == 0)
        return opensslError("server signature");
    return IssuedIdentity { std::move(certificate), std::move(key) };
}

} // namespace quillmar::testing_support
