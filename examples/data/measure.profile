; Profiles of a water probe, written down by hand. The first line has titles, so a line of measurements is
; one whose first field is a time of day.
[Profile]
Format=csv

[Message Probe]
Match.FieldCount=6
Match.Field.0=??????
Clock.Formula=TimeConv(field(0))
Clock.Unit=s
Clock.Digits=0
Depth.Formula=field(2)
Depth.Unit=m
Depth.Digits=1
Depth.Range=0..50
Temperature.Formula=field(3)
Temperature.Unit=degC
Temperature.Digits=2
Temperature.NotAvailable=-99.99
Temperature.Range=-2..35
Salinity.Formula=field(4)
Salinity.Unit=g/kg
Salinity.Digits=2
Salinity.Range=0..42
