import os, pathlib, subprocess, sys, time
sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "desktop"))
import radios, access_points as ap
t=time.monotonic()
def say(*a): print(f"{time.monotonic()-t:.1f}", *a, flush=True)
radios.prepare(); say("prepared")
aps=[ap.AccessPoint(1,b"Quay",1), ap.AccessPoint(2,b"Harbour",36,"wpa=2","wpa_psk="+"ab"*32,"rsn_pairwise=CCMP","wpa_key_mgmt=WPA-PSK"), ap.AccessPoint(3,b"Hid\xff den",6,hidden=True)]
n=ap.Neighbourhood(aps); say("announced")
n.echo(); [a.serve_addresses() for a in aps]
card=radios.Radio("card0",0xC000); say("card")
aps[0].radio.set_signal(-61)
radios.run("ip","link","set","card0","up")
print(radios.run("iw","dev","card0","scan","freq","2412","2437","5180")); say("scanned")
c=pathlib.Path("/tmp/w.conf"); c.write_text('ctrl_interface=/tmp/w\nnetwork={\nssid="Harbour"\npsk='+"ab"*32+'\nkey_mgmt=WPA-PSK\nscan_freq=5180\n}\n')
w=subprocess.Popen(["wpa_supplicant","-Dnl80211","-icard0","-c",c],stdout=subprocess.DEVNULL)
ap.wait_until("authorised",lambda:aps[1].has_authorised(card.address)); say("authorised")
say(ap.get_address("card0")); say(ap.exchange_datagram("card0",aps[1].gateway)); say(ap.exchange_datagram("card0",aps[1].gateway))
print(radios.run("iw","dev","card0","link"))
w.terminate(); w.wait()
card.pull(); say("pulled", radios.run("iw","dev")); card.insert(); say("inserted", radios.run("iw","dev"))
