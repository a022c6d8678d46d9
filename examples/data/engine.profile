; An engine, its gearbox and an inclinometer on two buses.
[Profile]
Format=j1939

; Electronic engine controller 1 (SAE J1939-71).
[Message EEC1]
Match.Pgn=61444
Speed.Raw=J1939Val(message, 7, 3)
Speed.Formula=raw * 0.125
Speed.Unit=rpm
Speed.Digits=1
Speed.Range=0..8031.875
Speed.Sentinels=J1939
Torque.Raw=J1939BitsVal(message, 6, 16, 8)
Torque.Formula=raw - 125
Torque.Unit=%
Torque.Digits=0
Torque.Range=-125..125
Torque.Sentinels=J1939

; Engine temperature 1.
[Message ET1]
Match.Pgn=65262
Coolant.Raw=J1939Val(message, 6, 0)
Coolant.Formula=raw - 40
Coolant.Unit=degC
Coolant.Digits=0
Coolant.Sentinels=J1939

; Engine fluid level and pressure 1.
[Message EFL]
Match.Pgn=65263
OilPressure.Raw=J1939Val(message, 6, 3)
OilPressure.Formula=raw * 4
OilPressure.Unit=kPa
OilPressure.Digits=0
OilPressure.Sentinels=J1939

; Active trouble codes: lamps, then number and kind of each. Two of them need two packets.
[Message DM1]
Match.Pgn=65226
Code1.Formula=J1939BitsVal(message, 7, 16, 16) + 65536 * J1939BitsVal(message, 6, 37, 3)
Code1.Digits=0
Kind1.Formula=J1939BitsVal(message, 6, 32, 5)
Kind1.Digits=0
Code2.Formula=J1939BitsVal(message, 7, 48, 16) + 65536 * J1939BitsVal(message, 6, 69, 3)
Code2.Digits=0
Kind2.Formula=J1939BitsVal(message, 6, 64, 5)
Kind2.Digits=0

; Engine configuration, which a display asks for: packets with a handshake.
[Message EC1]
Match.Pgn=65251
Match.Destination=33
IdleSpeed.Formula=J1939Val(message, 7, 0) * 0.125
IdleSpeed.Unit=rpm
IdleSpeed.Digits=1
ReferenceTorque.Raw=J1939Val(message, 7, 19)
ReferenceTorque.Unit=Nm
ReferenceTorque.Digits=0
ReferenceTorque.Sentinels=J1939

; The maker's own group of the gearbox: 16 bytes in three packets.
[Message Gearbox]
Match.Pgn=0xFF21
Match.Source=3
OilTemperature.Raw=J1939Val(message, 7, 8)
OilTemperature.Formula=raw * 0.03125 - 273
OilTemperature.Unit=degC
OilTemperature.Digits=1
OilTemperature.Sentinels=J1939
Hours.Raw=J1939Val(message, 8, 12)
Hours.Formula=raw * 0.05
Hours.Unit=h
Hours.Digits=2
Hours.Sentinels=J1939

; An inclinometer with standard frames of its own.
[Message Motion]
Match.Id=181
Match.Channel=can1
Roll.Formula=CanVal(frame, 2, 0) * 0.01
Roll.Unit=deg
Roll.Digits=2
Roll.Range=-45..45
Pitch.Formula=CanVal(frame, 2, 2) * 0.01
Pitch.Unit=deg
Pitch.Digits=2
Pitch.Range=-45..45
