// SPDX-License-Identifier: Apache-2.0
// Declarations by bindgen from the C headers, flags by pkg-config: no other crate is needed.
use std::process::Command;

fn output(command: &mut Command) -> String {
    let done = command.output().expect("cannot be run");
    assert!(done.status.success(), "{}", String::from_utf8_lossy(&done.stderr));
    String::from_utf8(done.stdout).unwrap()
}

fn main() {
    let include = std::env::var("ORVANE_INCLUDE").unwrap();
    let bindings = std::path::Path::new(&std::env::var("OUT_DIR").unwrap()).join("orvane.rs");
    output(Command::new("bindgen").arg(format!("{include}/orvane/orvane.h")).arg("--output").arg(bindings)
        .args(["--allowlist-function", "(api|orvane)_.*", "--allowlist-var", "ORVANE_.*"])
        .args(["--", &format!("-I{include}")]));
    for flag in output(Command::new("pkg-config").args(["--libs", "orvane"])).split_whitespace() {
        if let Some(folder) = flag.strip_prefix("-L") {
            println!("cargo:rustc-link-search=native={folder}");
        } else if let Some(name) = flag.strip_prefix("-l") {
            println!("cargo:rustc-link-lib=dylib={name}");
        }
    }
}
