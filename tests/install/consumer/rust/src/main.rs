// SPDX-License-Identifier: Apache-2.0
#![allow(non_upper_case_globals, non_camel_case_types, non_snake_case, dead_code)]
use std::ffi::CStr;

include!(concat!(env!("OUT_DIR"), "/orvane.rs"));

fn main() {
    let cells = [3.0, -1.0, 4.0, 1.0, -5.0, 9.0];
    let (mut low, mut high) = (0.0, 0.0);
    unsafe {
        let version = format!("{ORVANE_VERSION_MAJOR}.{ORVANE_VERSION_MINOR}.{ORVANE_VERSION_PATCH}");
        assert_eq!(CStr::from_ptr(orvane_version()).to_str().unwrap(), version);
        let table = api_Data2D_Create(2, 3);
        api_Data2D_SetValue(table, cells.as_ptr());
        api_Data2D_GetMinMax(table, &mut low, &mut high);
        println!("{} {} {}", low, high, api_Data2D_GetValueByIndex(table, 1, 0));
        api_FreeHandle(table.cast());
    }
}
