#!/usr/bin/env python3
"""Writes the seed inputs under fuzz/corpus/: a few well-formed Kav frames and wire
messages, so the fuzzers start from the interesting shapes instead of from nothing."""

import os
import struct

HERE = os.path.dirname(os.path.abspath(__file__))


def write(target, name, data):
    folder = os.path.join(HERE, "corpus", target)
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, name), "wb") as f:
        f.write(data)


def kav(frame_type, payload, blocks=b"", timestamp=0x0102030405060708):
    return b"kav" + struct.pack(">BIQB", frame_type, len(payload), timestamp, len(blocks)) + blocks + payload


def video(codec=1, rate100=2500, width=1920, height=1080):
    return struct.pack(">BBBHHH", 0x10, 7, codec, rate100, width, height)


def audio(a=0, b=0, c=0, d=0):
    return bytes([0x11, 4, b, d, a, c])


def kav_corpus():
    payload = bytes((i * 7 + 3) & 0xFF for i in range(64))
    write("fuzz_kav_unpack", "key_frame", kav(0xFA, payload, video() + audio()))
    write("fuzz_kav_unpack", "key_frame_2997", kav(0xFA, payload, video(2, 2997, 704, 576) + audio(1, 2, 3, 4)))
    write("fuzz_kav_unpack", "audio_frame", kav(0xF9, payload[:16], audio(9, 8, 7, 6)))
    write("fuzz_kav_unpack", "video_frame", kav(0xFB, payload))
    write("fuzz_kav_unpack", "plain_frame", kav(0xFC, payload[:1]))
    write("fuzz_kav_unpack", "type_zero", kav(0x00, payload))
    write("fuzz_kav_unpack", "unknown_tag", kav(0xFA, payload, bytes([0x42, 3, 1, 2, 3]) + video() + audio()))
    write("fuzz_kav_unpack", "short_by_blocks", kav(0xFA, payload, video() + audio())[:-15])


MAGIC, VERSION = 0x4B4D5458, 1


def message(msg_type, payload, request_id=1, status=0):
    return struct.pack(">IHHIiI", MAGIC, VERSION, msg_type, request_id, status, len(payload)) + payload


def text(s):
    data = s.encode()
    return struct.pack(">I", len(data)) + data


def wire_corpus():
    write("fuzz_wire_codec", "heartbeat", message(0x0001, b""))
    write("fuzz_wire_codec", "login", message(0x0002, text("admin") + text("secret")))
    write("fuzz_wire_codec", "set_time", message(0x0004, struct.pack(">6i", 2024, 3, 1, 8, 0, 0)))
    write("fuzz_wire_codec", "id_list", message(0x0021, struct.pack(">I3I", 3, 1, 2, 5)))
    write("fuzz_wire_codec", "geometry_answer", message(0x8010, struct.pack(">ii", 4, 3) + text("wall"), 7))
    write("fuzz_wire_codec", "division", message(0x0026, struct.pack(">ii", 1, 4)))
    frame = kav(0xFA, bytes(32), video() + audio())
    write("fuzz_wire_codec", "display_frame", message(0x0063, struct.pack(">iiI", 1, 0, len(frame)) + frame))
    write("fuzz_wire_codec", "two_messages",
          message(0x0031, b"", 2) + message(0x8031, struct.pack(">I", 0), 2, -3))
    write("fuzz_wire_codec", "bad_version", struct.pack(">IHHIiI", MAGIC, 2, 1, 1, 0, 0))


# The first byte picks the file fuzz_config_files reads the rest as.
DECODER_LIST, DECODER_LIST_WITH_STATE, WALL_LIST, LAST_CONNECTED, INI, ERROR_TABLE = range(6)


def config_corpus():
    decoder = (b'{"type":1,"id":"D1","ip":"127.0.0.2","port":28000,"nvr_port":0,"manager_port":28000,'
               b'"username":"admin","password":"x","status":1,"version":"1.0"}')
    write("fuzz_config_files", "decoder_list", bytes([DECODER_LIST]) + b'{"matrixList":[' + decoder + b']}')
    write("fuzz_config_files", "decoder_list_state", bytes([DECODER_LIST_WITH_STATE]) + b'{"matrixList":['
          + decoder[:-1] + b',"screenCnt":4,"connect_state":1}]}')
    write("fuzz_config_files", "wall_list", bytes([WALL_LIST]) + b'{"matrixList":[{"name":"Wall","main_decoder_ip":'
          b'"127.0.0.2","row":2,"column":2,"main_type":1,"second_ip":[{"ip":"127.0.0.3","location":1,"type":1}]}]}')
    write("fuzz_config_files", "last_connected", bytes([LAST_CONNECTED]) + b'{"matrixList":[],'
          b'"lastConnectedMatrixInfo":' + decoder + b'}')
    write("fuzz_config_files", "ini", bytes([INI]) + b"[info]\ntype=1\nip= 127.0.0.2 \nport=28000\n"
          b"username=YWRtaW4=\npassword=eA==\nis_software_project=false\n[bannerinfo]\nmessage=Hello\n"
          b"direction=1\nspeed=2\nfontPercent=50\nfontColor=#ff0000\nbackColor=#000000\nx=0\ny=0\nw=100\nh=10\n")
    # A colour with alpha, which a hand edit can put in the file (found by the fuzzer).
    write("fuzz_config_files", "ini_colour_with_alpha", bytes([INI]) + b"[bannerinfo]\nfontColor=#80ff0000\nbackColor=#00000000\n")
    write("fuzz_config_files", "error_table", bytes([ERROR_TABLE]) + struct.pack("<i", 1)
          + b'<?xml version="1.0"?><ErrorCodes><ErrorCode CodeValue="1" ErrorDescripZH="one"/>'
          b'<Other CodeValue="2" ErrorDescripZH="two"/></ErrorCodes>')


def login_corpus():
    write("fuzz_login_error", "passwd", b'{"ERRCODE":"PASSWDERR","PARAM":{"ERRNUM":2,"SUMNUM":5,"LOCKTIME":300}}')
    write("fuzz_login_error", "userlock", b'{"ERRCODE":"USERLOCK","PARAM":{"UNLOCKTIME":120}}')
    write("fuzz_login_error", "inactive", b'{"ERRCODE":"DEVNOACTIVE"}')
    # Attempts left were once the difference of two decoder counts taken in int.
    write("fuzz_login_error", "counts_at_the_limits",
          b'{"ERRCODE":"PASSWDERR","PARAM":{"ERRNUM":-2147483648,"SUMNUM":2147483647,"LOCKTIME":60}}')
    # A repeated key: Qt's reader keeps a few bytes of the replaced value.
    write("fuzz_login_error", "repeated_key", b'{"ERRCODE":"USERLOCK","PARAM":{"":0},"PARAM":{"":0}}')


if __name__ == "__main__":
    kav_corpus()
    wire_corpus()
    config_corpus()
    login_corpus()
