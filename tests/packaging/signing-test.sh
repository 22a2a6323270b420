#!/usr/bin/env bash
# signing-test.sh FILE... : signs copies with a certificate made for it; each signature holds, and no longer does when a byte
# of the file is another. Nothing is signed without a certificate.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }
openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj '/CN=Dravik test' -addext extendedKeyUsage=codeSigning \
    -keyout "$scratch/key" -out "$scratch/certificate" 2>/dev/null
echo secret >"$scratch/password"
openssl pkcs12 -export -inkey "$scratch/key" -in "$scratch/certificate" -out "$scratch/both" -passout file:"$scratch/password"
holds() { osslsigncode verify -CAfile "$scratch/certificate" -in "$1" >/dev/null 2>&1; }
for file; do
    copy=$scratch/$(basename "$file")
    cp "$file" "$copy"
    "$here/../../packaging/sign.sh" "$copy"
    cmp -s "$file" "$copy" || fail "$file was changed without a certificate"
    DRAVIK_CERTIFICATE=$scratch/both DRAVIK_CERTIFICATE_PASSWORD=$scratch/password "$here/../../packaging/sign.sh" "$copy"
    holds "$copy" || fail "the signature of $file does not hold"
    printf 'X' | dd of="$copy" bs=1 seek=5000 conv=notrunc status=none
    ! holds "$copy" || fail "the signature of $file holds whatever the file contains"
done
if DRAVIK_CERTIFICATE=$scratch/none "$here/../../packaging/sign.sh" "$1" 2>/dev/null; then fail "a missing certificate is no error"; fi
echo "Signed with a certificate and checked: $(for file; do basename "$file"; done | tr '\n' ' ')"
