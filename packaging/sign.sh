#!/usr/bin/env bash
# sign.sh FILE... : signs programs, controls and installers in place with the certificate and key of the PKCS #12 file that
# DRAVIK_CERTIFICATE names; its password is in the file of DRAVIK_CERTIFICATE_PASSWORD, and DRAVIK_TIMESTAMP is the address of
# a time-stamping service, without which signatures end with the certificate. Does nothing without a certificate.
set -euo pipefail
[ -n "${DRAVIK_CERTIFICATE:-}" ] || exit 0
options=(-pkcs12 "$DRAVIK_CERTIFICATE" -h sha256 -n "Dravik font training")
[ -z "${DRAVIK_CERTIFICATE_PASSWORD:-}" ] || options+=(-readpass "$DRAVIK_CERTIFICATE_PASSWORD")
[ -z "${DRAVIK_TIMESTAMP:-}" ] || options+=(-ts "$DRAVIK_TIMESTAMP")
for file; do
    osslsigncode sign "${options[@]}" -in "$file" -out "$file.signed" >/dev/null || { echo "$file cannot be signed" >&2; exit 1; }
    mv "$file.signed" "$file"
done
