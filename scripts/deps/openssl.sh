# shellcheck shell=bash

# libcrypto alone, static, without what no caller of ours reaches; the low-level AES and DES functions stay.
build_openssl() {
  local off=(shared tests dso engine module pinshared autoload-config async ssl tls dtls comp cms ct ocsp ts srp psk
    legacy aria bf camellia cast chacha gost idea md4 mdc2 poly1305 rc2 rc4 rmd160 scrypt seed siphash sm2 sm3 sm4 whirlpool)
  local tools=x86_64-w64-mingw32
  need_packages make perl
  debian_source openssl "$1" &&
    cd "$1/source" &&
    CC=$tools-gcc-posix AR=$tools-ar RANLIB=$tools-ranlib RC=$tools-windres \
      perl Configure mingw64 "${off[@]/#/no-}" --prefix="$2" --libdir=lib &&
    make -j "$(nproc)" build_generated libcrypto.a &&
    mkdir -p "$2/lib" "$2/include" "$2/share/licenses/openssl" &&
    cp LICENSE.txt "$2/share/licenses/openssl/" &&
    cp -r include/openssl "$2/include/" &&
    cp libcrypto.a "$2/lib/"
}

version_openssl() { source_version openssl openssl; }
