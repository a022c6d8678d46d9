; A survey vessel on a line: position, course and depth (NMEA 0183). Fields count from 0, the address.
[Profile]
Format=nmea

[Message GGA]
Match.Sentence=??GGA
Latitude.Formula=NMEAPos(field(2), field(3))
Latitude.Unit=deg
Latitude.Digits=6
Latitude.Range=-90..90
Longitude.Formula=NMEAPos(field(4), field(5))
Longitude.Unit=deg
Longitude.Digits=6
Longitude.Range=-180..180
Satellites.Formula=field(7)
Satellites.Digits=0

[Message RMC]
Match.Sentence=??RMC
Speed.Formula=field(7) * 1852 / 3600
Speed.Unit=m/s
Speed.Digits=2
Speed.Range=0..50
Course.Formula=field(8)
Course.Unit=deg
Course.Digits=1
Course.Range=0..360

; Below the transducer. An echo from nearer than 30 cm is none; 99.99 stands for no echo at all.
[Message DBT]
Match.Sentence=??DBT
Depth.Formula=field(3)
Depth.Unit=m
Depth.Digits=2
Depth.NotAvailable=99.99
Depth.Range=0.3..200

; The same echo below the surface: the second field is how deep the transducer sits.
[Message DPT]
Match.Sentence=??DPT
Surface.Formula=field(1) + field(2)
Surface.Unit=m
Surface.Digits=2
Surface.Range=1.4..200

[Message HDT]
Match.Sentence=??HDT
Heading.Formula=field(1)
Heading.Unit=deg
Heading.Digits=1
Heading.Range=0..360
