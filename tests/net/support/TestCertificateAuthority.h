#pragma once

#include <memory>
#include <string>
#include <vector>

#include <openssl/evp.h>
#include <openssl/x509.h>

#include "core/base/Result.h"

namespace quillmar::testing_support {

struct X509Free {
    void operator()(X509* certificate) const { X509_free(certificate); }
};
struct KeyFree {
    void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
};
using X509Pointer = std::unique_ptr<X509, X509Free>;
using KeyPointer = std::unique_ptr<EVP_PKEY, KeyFree>;

// A server certificate and its private key, as a TLS server loads them.
struct IssuedIdentity {
    X509Pointer certificate;
    KeyPointer key;
};

// A certificate authority made in memory at test time (P-256 keys, SHA-256 signatures, valid from an hour
// ago for a day), so that a local server can present a certificate that a client trusts only when told to.
class TestCertificateAuthority final {
public:
    static Result<TestCertificateAuthority> create();

    // A server certificate signed by this authority whose subjectAltName lists `dnsNames`.
    Result<IssuedIdentity> issue(const std::vector<std::string>& dnsNames) const;

    // The authority's own certificate in PEM: the trust anchor a client adds.
    const std::string& certificatePem() const { return m_certificatePem; }

private:
    TestCertificateAuthority(X509Pointer certificate, KeyPointer key, std::string pem);

    X509Pointer m_certificate;
    KeyPointer m_key;
    std::string m_certificatePem;
};

} // namespace quillmar::testing_support
